# The runtime libraries of mingw-w64: they belong beside every program and beside the installed DLL.
# Programs of 32 and of 64 bits unwind exceptions in different ways, each with its own library.
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    set(unwinder dw2)
else()
    set(unwinder seh)
endif()
set(mingw_runtime)
foreach(name libstdc++-6.dll libgcc_s_${unwinder}-1.dll libwinpthread-1.dll)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${name}
        OUTPUT_VARIABLE found OUTPUT_STRIP_TRAILING_WHITESPACE)
    if(NOT IS_ABSOLUTE "${found}" OR NOT EXISTS "${found}")
        message(FATAL_ERROR "${name} is not among the files of ${CMAKE_CXX_COMPILER}")
    endif()
    list(APPEND mingw_runtime ${found})
endforeach()
file(COPY ${mingw_runtime} DESTINATION ${CMAKE_RUNTIME_OUTPUT_DIRECTORY} FOLLOW_SYMLINK_CHAIN)
install(FILES ${mingw_runtime} DESTINATION ${CMAKE_INSTALL_BINDIR})
