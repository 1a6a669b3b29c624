# Fails unless the symbols that LIBRARY exports, as NM shows them or, of a DLL, OBJDUMP, are these.

set(namespace orv::domain::shared::enhancementsforreferencemodel)
set(expected
    "${namespace}::EnhancementBase::createInstance"
    "${namespace}::EnhancementBase::setAttributes"
    "${namespace}::Enhancements::addEnhancement"
    "${namespace}::Enhancements::addEnhancements"
    "${namespace}::Enhancements::getOrCreateEnhancementsDb"
    "${namespace}::Enhancements::loadAtOnce"
    "${namespace}::Enhancements::resetDb"
    "${namespace}::Enhancements::saveChanges"
    "${namespace}::Enhancements::takeRecord"
    "${namespace}::Enhancements::takeRecords"
    "${namespace}::EnhancementsFile::setFilePath"
    "${namespace}::Factory::createEntityFromName"
    "${namespace}::Factory::registerClass"
    "${namespace}::PsetData::PsetData"
    "${namespace}::PsetData::getDb"
    "${namespace}::PsetData::getListValues"
    "${namespace}::PsetData::getObjectFromGuidCallbackSet"
    "${namespace}::PsetData::getPsetShadowDbReadOnlyCallbackSet"
    "${namespace}::PsetData::getPsetShadowDbReadWriteCallbackSet"
    "${namespace}::PsetData::getTableValues"
    "${namespace}::PsetData::getValue"
    "${namespace}::PsetData::getValueAsBool"
    "${namespace}::PsetData::getValueAsDouble"
    "${namespace}::PsetData::getValueAsString"
    "${namespace}::PsetData::setValue"
    "orv::math::_3d::Extent::uniteWith"
    "typeinfo for ${namespace}::EnhancementBase"
    "typeinfo name for ${namespace}::EnhancementBase"
    "vtable for ${namespace}::EnhancementBase"
)

if(OBJDUMP)
    list(REMOVE_ITEM expected "typeinfo name for ${namespace}::EnhancementBase") # each DLL has its own
    execute_process(COMMAND ${OBJDUMP} --private-headers ${LIBRARY} COMMAND ${CXXFILT} OUTPUT_VARIABLE headers
                    COMMAND_ERROR_IS_FATAL ANY)
    string(REGEX REPLACE "^.*Ordinal/Name Pointer. Table[^\n]*\n" "" symbols "${headers}")
    string(REGEX REPLACE "\n\n.*" "" symbols "${symbols}")
    string(REGEX REPLACE "\t\\[[ 0-9]+\\] (\\+base\\[[ 0-9]+\\] +[0-9a-f]+ )?" "" symbols "${symbols}")
else()
    execute_process(COMMAND ${NM} --dynamic --defined-only --demangle --format=just-symbols ${LIBRARY}
                    OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
endif()
string(REGEX REPLACE "\\([^\n]*" "" symbols "${symbols}")
string(STRIP "${symbols}" symbols)
string(REPLACE "\n" ";" symbols "${symbols}")
list(REMOVE_DUPLICATES symbols) # forms of one operation
list(SORT symbols)
list(SORT expected)
if(NOT symbols STREQUAL expected)
    list(JOIN symbols "\n  " shown)
    message(FATAL_ERROR "The library shows these symbols, which aren't all its exports and no others:\n  ${shown}")
endif()
