# The libraries beneath OrvEnhancements, each of which an application that adds this project may replace by its own:
# docs/building.md tells how.

set(ORV_SIBLINGS Assert Id Object Utilities Xml FoundationClasses IfcVersionMapping)

foreach(sibling IN LISTS ORV_SIBLINGS)
    string(REGEX REPLACE "([a-z])([A-Z])" "\\1_\\2" option ${sibling})
    string(TOUPPER ORV_${option}_TARGET option)
    set(${option} "" CACHE STRING "The application's target in place of Orv${sibling}")
    if(${option})
        if(NOT TARGET ${${option}})
            message(FATAL_ERROR "${option} names ${${option}}, which is no target yet: define it before adding OrvEnhancements.")
        endif()
        # The application's may be an alias, or imported in its directory alone, of which there are no aliases.
        add_library(OrvOwn${sibling} INTERFACE)
        target_link_libraries(OrvOwn${sibling} INTERFACE ${${option}})
        add_library(Orv::${sibling} ALIAS OrvOwn${sibling})
        list(APPEND ORV_REPLACEMENTS Orv::${sibling})
    endif()
endforeach()
if(ORV_REPLACEMENTS AND ORV_INSTALL)
    message(FATAL_ERROR "What is installed has all siblings of its own: ORV_INSTALL can't be ON where one is replaced.")
endif()

# Adds the sibling in the directory of its name, unless the application has its own.
function(orv_add_sibling name)
    if(NOT Orv::${name} IN_LIST ORV_REPLACEMENTS)
        add_subdirectory(${name})
    endif()
endfunction()
