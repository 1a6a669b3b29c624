# What is installed: the libraries (component OrvRuntime), what building a host takes (OrvDevelopment) and annotate
# (OrvAnnotate). It can be moved as a whole.

include(CMakePackageConfigHelpers)

get_property(orvLibraries GLOBAL PROPERTY ORV_LIBRARIES)
install(
    TARGETS ${orvLibraries}
    EXPORT OrvTargets
    RUNTIME COMPONENT OrvRuntime
    LIBRARY COMPONENT OrvRuntime NAMELINK_COMPONENT OrvDevelopment
    ARCHIVE COMPONENT OrvDevelopment
)

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
    Xml/ChildEvents.h
    Xml/Element.h
    Xml/ErrorHandler.h
    Xml/File.h
    Xml/LineEnding.h
    Xml/MarkupWriter.h
    Xml/Node.h
    Xml/NodeList.h
    Xml/Outline.h
    Xml/ParseFailure.h
    Xml/Surroundings.h
    Xml/Utf8.h
)
foreach(header IN LISTS headers)
    cmake_path(GET header PARENT_PATH directory)
    install(FILES ${PROJECT_SOURCE_DIR}/Source/${header} COMPONENT OrvDevelopment
            DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/OrvEnhancements/${directory})
endforeach()

# For find_package(OrvEnhancements).
set(packageDirectory ${CMAKE_INSTALL_LIBDIR}/cmake/OrvEnhancements)
install(EXPORT OrvTargets COMPONENT OrvDevelopment NAMESPACE Orv:: FILE OrvEnhancementsTargets.cmake
        DESTINATION ${packageDirectory})
configure_package_config_file(cmake/OrvEnhancementsConfig.cmake.in ${CMAKE_CURRENT_BINARY_DIR}/OrvEnhancementsConfig.cmake
                              INSTALL_DESTINATION ${packageDirectory})
write_basic_package_version_file(OrvEnhancementsConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/OrvEnhancementsConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/OrvEnhancementsConfigVersion.cmake
        COMPONENT OrvDevelopment DESTINATION ${packageDirectory})

# For pkg-config.
set(pkgConfigDirectory ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH toPrefix ${pkgConfigDirectory} ${CMAKE_INSTALL_PREFIX})
file(RELATIVE_PATH fromPrefixToLibraries ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_LIBDIR})
file(RELATIVE_PATH fromPrefixToHeaders ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_INCLUDEDIR})
list(REMOVE_ITEM orvLibraries OrvHost)
list(REVERSE orvLibraries)
list(TRANSFORM orvLibraries PREPEND -l)
list(JOIN orvLibraries " " linkOptions)
foreach(package orv-enhancements orv-host)
    configure_file(cmake/${package}.pc.in ${package}.pc @ONLY)
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${package}.pc COMPONENT OrvDevelopment
            DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()
