# Debian packages by `cpack --preset packages`: the libraries, what building a host takes, and annotate. For Windows
# there is one archive with all of it, by `cpack --preset windows`.

set(ORV_PACKAGE_CONTACT "OrvEnhancements <maintainers@orvenhancements.invalid>" CACHE STRING "Who maintains the packages")

set(CPACK_PACKAGE_NAME orvenhancements)
set(CPACK_PACKAGE_VENDOR OrvEnhancements)
set(CPACK_PACKAGE_CONTACT ${ORV_PACKAGE_CONTACT})
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_STRIP_FILES ON)
if(WIN32)
    set(CPACK_GENERATOR ZIP)
    set(CPACK_PACKAGE_FILE_NAME orvenhancements-${PROJECT_VERSION}-windows-x86_64)
    include(CPack)
    return()
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/Debian/Documents.cmake)

set(CPACK_COMPONENTS_ALL OrvRuntime OrvDevelopment)
if(TARGET annotate)
    list(APPEND CPACK_COMPONENTS_ALL OrvAnnotate)
endif()

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY >=)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Where annotate's package finds the libraries that another one has.
get_property(orvLibraries GLOBAL PROPERTY ORV_LIBRARIES)
foreach(library IN LISTS orvLibraries)
    get_target_property(directory ${library} BINARY_DIR)
    list(APPEND CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${directory})
endforeach()

set(libraries liborvenhancements${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
set(sameVersion "(= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")

set(CPACK_DEBIAN_ORVRUNTIME_PACKAGE_NAME ${libraries})
set(CPACK_DEBIAN_ORVRUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_ORVRUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/cmake/Debian/triggers)
set(CPACK_COMPONENT_ORVRUNTIME_DESCRIPTION
    "The libraries: records in an XML file, and property values on the objects\nof a model that isn't changed."
)

set(CPACK_DEBIAN_ORVDEVELOPMENT_PACKAGE_NAME liborvenhancements-dev)
set(CPACK_DEBIAN_ORVDEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_ORVDEVELOPMENT_PACKAGE_DEPENDS "${libraries} ${sameVersion}")
set(CPACK_COMPONENT_ORVDEVELOPMENT_DESCRIPTION
    "What building a host takes: headers, and files for CMake and pkg-config."
)

set(CPACK_DEBIAN_ORVANNOTATE_PACKAGE_NAME annotate)
set(CPACK_DEBIAN_ORVANNOTATE_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_ORVANNOTATE_PACKAGE_DEPENDS "${libraries} ${sameVersion}")
set(CPACK_COMPONENT_ORVANNOTATE_DESCRIPTION
    "The command-line tool: notes and property values on the objects of an IFC\nfile, kept in a file beside it."
)

include(CPack)
