# What differs for Windows.

# Programs look for DLLs beside themselves.
if(NOT CMAKE_RUNTIME_OUTPUT_DIRECTORY)
    set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
endif()

# The systems that are supported, and none of the header's macros that are called like functions of C++.
add_compile_definitions(_WIN32_WINNT=0x0A00 WIN32_LEAN_AND_MEAN NOMINMAX UNICODE)

if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # GCC 12 takes values of std::optional for uninitialized that are looked at in one branch alone.
    add_compile_options(-Wno-maybe-uninitialized)
endif()

# The compiler's own DLLs. They are found when CMake runs; an application that has them elsewhere needs no copy.
foreach(name libstdc++-6 libgcc_s_seh-1 libwinpthread-1)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${name}.dll OUTPUT_VARIABLE dll
                    OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    file(REAL_PATH ${dll} dll)
    list(APPEND ORV_COMPILER_DLLS ${dll})
endforeach()
file(COPY ${ORV_COMPILER_DLLS} DESTINATION ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
if(ORV_INSTALL)
    install(FILES ${ORV_COMPILER_DLLS} TYPE BIN)
endif()
