# The installed package: find_package(OrvEnhancements) gives the Orv:: targets.

include(CMakePackageConfigHelpers)

get_property(orvLibraries GLOBAL PROPERTY ORV_LIBRARIES)
install(TARGETS ${orvLibraries} EXPORT OrvTargets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})

# What hosts may include. Each header includes no header of the project but these.
set(headers
    Assert/Assert.h
    Assert/AssertInfo.h
    Core/Math/3D/Bounding3D.h
    Domain/Shared/EnhancementsForReferenceModel/EnhancementBase.h
    Domain/Shared/EnhancementsForReferenceModel/Enhancements.h
    Domain/Shared/EnhancementsForReferenceModel/EnhancementsFile.h
    Domain/Shared/EnhancementsForReferenceModel/Factory.h
    Domain/Shared/EnhancementsForReferenceModel/PsetData.h
    FoundationClasses/CompactText.h
    FoundationClasses/Data.h
    FoundationClasses/FcBase.h
    FoundationClasses/FcObjectDefinition.h
    FoundationClasses/FcProperty.h
    FoundationClasses/FcPropertyBoundedValue.h
    FoundationClasses/FcPropertyEnumeratedValue.h
    FoundationClasses/FcPropertyListValue.h
    FoundationClasses/FcPropertySet.h
    FoundationClasses/FcPropertySetDefinition.h
    FoundationClasses/FcPropertySingleValue.h
    FoundationClasses/FcPropertyTableValue.h
    FoundationClasses/FcShadowDb.h
    FoundationClasses/FcValue.h
    FoundationClasses/FcValueType.h
    FoundationClasses/GuidIndex.h
    FoundationClasses/IfcClass.h
    FoundationClasses/NameIndex.h
    FoundationClasses/NameTable.h
    FoundationClasses/TableName.h
    Host/Field.h
    Host/FieldText.h
    Host/NearestNames.h
    Host/Outcome.h
    Host/Overlay.h
    Host/PropertyEdits.h
    Host/ReadRecords.h
    Host/Record.h
    Host/TextsAsRead.h
    Host/TimeText.h
    Id/Guid.h
    IfcVersionMapping/Def.h
    IfcVersionMapping/SchemaDefinitions.h
    IfcVersionMapping/SetApplicability.h
    Object/Logical.h
    Object/PropertyValue.h
    OrvExport.h
    Utilities/DocumentReading.h
    Utilities/FileLock.h
    Utilities/FileState.h
    Utilities/ScopeGuard.h
    Xml/Element.h
    Xml/ErrorHandler.h
    Xml/File.h
    Xml/LineEnding.h
    Xml/MarkupWriter.h
    Xml/Node.h
    Xml/NodeList.h
    Xml/Outline.h
    Xml/RecordEvents.h
    Xml/Surroundings.h
    Xml/Utf8.h
)
foreach(header IN LISTS headers)
    cmake_path(GET header PARENT_PATH directory)
    install(FILES ${PROJECT_SOURCE_DIR}/Source/${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/OrvEnhancements/${directory})
endforeach()

set(packageDirectory ${CMAKE_INSTALL_LIBDIR}/cmake/OrvEnhancements)
install(EXPORT OrvTargets NAMESPACE Orv:: FILE OrvEnhancementsConfig.cmake DESTINATION ${packageDirectory})
write_basic_package_version_file(OrvEnhancementsConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/OrvEnhancementsConfigVersion.cmake DESTINATION ${packageDirectory})
