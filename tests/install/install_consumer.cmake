# Installs the library somewhere it was not configured for, and builds and runs the consumer there:
# once through find_package and once through pkg-config.
set(consumer ${CMAKE_CURRENT_LIST_DIR}/consumer)
set(prefix ${work}/prefix)
set(ENV{JW32_DRIVE_C} ${work}/drive_c)

function(run)
    execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

file(REMOVE_RECURSE ${work})
file(MAKE_DIRECTORY ${work}/cmake ${work}/pkg-config)
run(${CMAKE_COMMAND} --install ${build} --prefix ${prefix})

run(${CMAKE_COMMAND} -G Ninja -S ${consumer} -B ${work}/cmake
    -D CMAKE_PREFIX_PATH=${prefix} -D CMAKE_CXX_COMPILER=${compiler})
run(${CMAKE_COMMAND} --build ${work}/cmake)
run(${work}/cmake/consumer)

set(ENV{PKG_CONFIG_PATH} ${prefix}/${libdir}/pkgconfig)
execute_process(COMMAND ${pkg_config} --cflags --libs jw32
    OUTPUT_VARIABLE flags OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
separate_arguments(flags UNIX_COMMAND "${flags}")
run(${compiler} -std=c++20 ${consumer}/consumer.cpp -o ${work}/pkg-config/consumer ${flags}
    -Wl,-rpath,${prefix}/${libdir})
run(${work}/pkg-config/consumer)
