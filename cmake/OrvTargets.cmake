# What all targets of the project have in common.

include(GNUInstallDirs)

# So that the installed libraries find each other, wherever they are put.
if(NOT DEFINED CMAKE_INSTALL_RPATH)
    set(CMAKE_INSTALL_RPATH "\$ORIGIN")
endif()

option(ORV_WARNINGS "Compile with the project's warnings" ${PROJECT_IS_TOP_LEVEL})

function(orv_set_target_properties target)
    target_compile_features(${target} PUBLIC cxx_std_20)
    set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF CXX_VISIBILITY_PRESET hidden
                                               VISIBILITY_INLINES_HIDDEN ON)
    # A library's calls of its own operations stay within it, and can be inlined.
    target_compile_options(${target} PRIVATE -fno-semantic-interposition)
    # GCC makes the standard library's inline variables unique in the process, and a library with such a symbol is never
    # unloaded.
    target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>)
    if(ORV_WARNINGS)
        target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
    endif()
    target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/Source>
                                                $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/OrvEnhancements>)
    # Ahead of Source, where the headers of the replaced sibling lie as well.
    foreach(replacement IN LISTS ORV_REPLACEMENTS)
        target_include_directories(
            ${target} BEFORE PUBLIC $<BUILD_INTERFACE:$<TARGET_PROPERTY:${replacement},INTERFACE_INCLUDE_DIRECTORIES>>
        )
    endforeach()
endfunction()

# A shared library OrvName with the alias Orv::Name. Always shared, so that a host and the libraries see the same
# process-wide objects.
function(orv_add_library target)
    string(REGEX REPLACE "^Orv" "" name ${target})
    add_library(${target} SHARED ${ARGN})
    add_library(Orv::${name} ALIAS ${target})
    orv_set_target_properties(${target})
    set_target_properties(${target} PROPERTIES EXPORT_NAME ${name} VERSION ${PROJECT_VERSION}
                                               SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
    set_property(GLOBAL APPEND PROPERTY ORV_LIBRARIES ${target})
endfunction()
