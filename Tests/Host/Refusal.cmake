# Compiles a source with one thing wrong in a record, and fails unless the compiler refuses it with the sentence, in no
# more lines than a screen has.

execute_process(COMMAND ${COMPILER} -std=c++20 -fsyntax-only -D${WRONG} -I${INCLUDES} ${SOURCE} RESULT_VARIABLE result
                ERROR_VARIABLE message)
string(REGEX MATCHALL "\n" lines "${message}")
list(LENGTH lines length)
string(FIND "${message}" "${SENTENCE}" position)
if(result EQUAL 0 OR position EQUAL -1 OR length GREATER 24)
    message(FATAL_ERROR "Compiled with ${WRONG}, ${length} lines of message:\n${message}")
endif()
