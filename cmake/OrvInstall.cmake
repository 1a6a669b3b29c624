# The installed package: find_package(OrvEnhancements) gives the Orv:: targets.

include(CMakePackageConfigHelpers)

get_property(orvLibraries GLOBAL PROPERTY ORV_LIBRARIES)
install(TARGETS ${orvLibraries} EXPORT OrvTargets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/Source/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/OrvEnhancements
        FILES_MATCHING PATTERN "*.h" REGEX "(Utilities/(KeptCopy|OpenFile|SystemCalls)|Xml/(Buffer|Document|Escape|Names|Parser|Writer))" EXCLUDE)

set(packageDirectory ${CMAKE_INSTALL_LIBDIR}/cmake/OrvEnhancements)
install(EXPORT OrvTargets NAMESPACE Orv:: FILE OrvEnhancementsConfig.cmake DESTINATION ${packageDirectory})
write_basic_package_version_file(OrvEnhancementsConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/OrvEnhancementsConfigVersion.cmake DESTINATION ${packageDirectory})
