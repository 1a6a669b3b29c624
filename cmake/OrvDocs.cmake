# The target docs: the reference of what hosts include, and the guides, as pages in docs/html. A warning fails it.

find_package(Doxygen 1.9 QUIET)
if(NOT DOXYGEN_FOUND)
    add_custom_target(
        docs
        COMMAND ${CMAKE_COMMAND} -E echo "Doxygen is missing: install it and run cmake again."
        COMMAND ${CMAKE_COMMAND} -E false
    )
    return()
endif()

# Without those that others include for their own sake alone.
set(documented ${headers})
list(FILTER documented EXCLUDE REGEX "^OrvExport|CompactText|NameIndex|NameTable|TableName|GuidIndex|TextsAsRead")
list(TRANSFORM documented PREPEND Source/)
file(GLOB guides RELATIVE ${PROJECT_SOURCE_DIR} CONFIGURE_DEPENDS docs/*.md)

set(DOXYGEN_PROJECT_BRIEF ${PROJECT_DESCRIPTION})
set(DOXYGEN_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/docs)
set(DOXYGEN_STRIP_FROM_PATH ${PROJECT_SOURCE_DIR}/Source ${PROJECT_SOURCE_DIR})
set(DOXYGEN_STRIP_FROM_INC_PATH ${PROJECT_SOURCE_DIR}/Source)
set(DOXYGEN_USE_MDFILE_AS_MAINPAGE ${PROJECT_SOURCE_DIR}/docs/reference.md)
set(DOXYGEN_IMAGE_PATH ${PROJECT_SOURCE_DIR}/docs)
set(DOXYGEN_JAVADOC_AUTOBRIEF YES)
set(DOXYGEN_DISTRIBUTE_GROUP_DOC YES)
set(DOXYGEN_EXTRACT_ALL YES)
set(DOXYGEN_MACRO_EXPANSION YES)
set(DOXYGEN_EXPAND_ONLY_PREDEF YES)
foreach(library ASSERT ENHANCEMENTS FOUNDATION_CLASSES HOST ID IFC_VERSION_MAPPING OBJECT UTILITIES XML)
    list(APPEND DOXYGEN_PREDEFINED ORV_${library}_EXPORT=)
endforeach()
set(DOXYGEN_HAVE_DOT NO)
set(DOXYGEN_QUIET YES)
set(DOXYGEN_WARN_AS_ERROR FAIL_ON_WARNINGS)
doxygen_add_docs(docs ${documented} ${guides})
# What the guides link to beside each other, in the same place from the pages.
add_custom_command(
    TARGET docs
    POST_BUILD
    COMMAND ${CMAKE_COMMAND} -E copy_directory ${PROJECT_SOURCE_DIR}/Examples ${DOXYGEN_OUTPUT_DIRECTORY}/Examples
    COMMAND ${CMAKE_COMMAND} -E copy_directory ${PROJECT_SOURCE_DIR}/Tests/Siblings
            ${DOXYGEN_OUTPUT_DIRECTORY}/Tests/Siblings
    COMMAND ${CMAKE_COMMAND} -E copy ${PROJECT_SOURCE_DIR}/docs/annotate.schema.json ${DOXYGEN_OUTPUT_DIRECTORY}/html
)
