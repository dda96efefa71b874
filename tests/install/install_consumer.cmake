# Installs the library somewhere it was not configured for, and builds the consumer upon it: once
# through find_package and once through pkg-config. Cross-builds get the compiler and the system.
set(consumer ${CMAKE_CURRENT_LIST_DIR}/consumer)
set(prefix ${work}/prefix)

function(run)
    execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

function(ask_pkg_config result)
    execute_process(COMMAND ${pkg_config} ${ARGN} jw32 OUTPUT_VARIABLE answer
        OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    separate_arguments(answer UNIX_COMMAND "${answer}")
    set(${result} ${answer} PARENT_SCOPE)
endfunction()

file(REMOVE_RECURSE ${work})
file(MAKE_DIRECTORY ${work}/find_package ${work}/pkg_config)
run(${CMAKE_COMMAND} --install ${build} --prefix ${prefix})

if(NOT system STREQUAL CMAKE_HOST_SYSTEM_NAME)
    set(cross -D CMAKE_SYSTEM_NAME=${system})
endif()
run(${CMAKE_COMMAND} -G Ninja -S ${consumer} -B ${work}/find_package ${cross}
    -D CMAKE_PREFIX_PATH=${prefix} -D CMAKE_CXX_COMPILER=${compiler})
run(${CMAKE_COMMAND} --build ${work}/find_package)

set(ENV{PKG_CONFIG_PATH} ${prefix}/${libdir}/pkgconfig)
ask_pkg_config(flags --cflags --libs)
if(system STREQUAL "Windows")
    set(output ${work}/pkg_config/consumer.exe)
    # The libraries are shipped beside the program.
    file(GLOB libraries ${prefix}/bin/*.dll)
    file(COPY ${libraries} DESTINATION ${work}/find_package)
    file(COPY ${libraries} DESTINATION ${work}/pkg_config)
else()
    set(output ${work}/pkg_config/consumer)
    ask_pkg_config(folder --variable=libdir)
    list(APPEND flags -Wl,-rpath,${folder})
endif()
run(${compiler} -std=c++20 ${consumer}/consumer.cpp -o ${output} ${flags})
