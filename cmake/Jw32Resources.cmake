# jw32_target_resources(TARGET FILE.rc... [DEPENDS FILE...]): the resources of a program or a shared
# library, from the same .rc in every build.
#
# In the Linux build it also makes the target a module of the platform: its resources are found by
# its handle, and where it defines DllMain, that is called as the loader of Windows does. There the
# .rc is compiled by windres (Debian: binutils-mingw-w64-x86-64), with the target's include folders
# and definitions. DEPENDS names further files that the .rc takes in as they are.
function(jw32_target_resources target)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" DEPENDS)
    foreach(file ${ARG_UNPARSED_ARGUMENTS})
        cmake_path(ABSOLUTE_PATH file BASE_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR} NORMALIZE)
        if(WIN32)
            target_sources(${target} PRIVATE ${file})
            set_property(SOURCE ${file} TARGET_DIRECTORY ${target}
                APPEND PROPERTY OBJECT_DEPENDS ${ARG_DEPENDS})
        else()
            jw32_embed_resources(${target} ${file} "${ARG_DEPENDS}")
        endif()
    endforeach()
    if(NOT WIN32)
        target_sources(${target} PRIVATE ${JW32_MODULE_START})
        target_link_libraries(${target} PRIVATE jw32::platform)
    endif()
endfunction()

# Compiles one .rc and puts the result into a read-only section of the target. The linker names the
# two ends of the section after it.
function(jw32_embed_resources target file depends)
    find_program(JW32_WINDRES x86_64-w64-mingw32-windres i686-w64-mingw32-windres)
    if(NOT JW32_WINDRES)
        message(FATAL_ERROR "windres is missing (Debian: binutils-mingw-w64-x86-64)")
    endif()
    cmake_path(GET file STEM name)
    set(base ${CMAKE_CURRENT_BINARY_DIR}/${target}_${name})
    set(includes $<TARGET_PROPERTY:${target},INCLUDE_DIRECTORIES>)
    set(definitions $<TARGET_PROPERTY:${target},COMPILE_DEFINITIONS>)
    set(preprocessor_arguments -E -xc -DRC_INVOKED -MMD -MF ${base}.d -MT ${base}.res)
    list(TRANSFORM preprocessor_arguments PREPEND --preprocessor-arg=)
    add_custom_command(OUTPUT ${base}.res
        COMMAND ${JW32_WINDRES} --preprocessor=${CMAKE_CXX_COMPILER} ${preprocessor_arguments}
            "$<$<BOOL:${includes}>:-I$<JOIN:${includes},;-I>>"
            "$<$<BOOL:${definitions}>:-D$<JOIN:${definitions},;-D>>"
            -O res -i ${file} -o ${base}.res
        DEPENDS ${file} ${depends} DEPFILE ${base}.d VERBATIM COMMAND_EXPAND_LISTS)
    file(CONFIGURE OUTPUT ${base}.cpp @ONLY CONTENT
"// Takes the compiled resources in.
__asm__(\".pushsection jw32_resources, \\\"a\\\"\\n\"
        \".balign 4\\n\"
        \".incbin \\\"@base@.res\\\"\\n\"
        \".balign 4\\n\"
        \".popsection\\n\");
")
    target_sources(${target} PRIVATE ${base}.cpp)
    set_source_files_properties(${base}.cpp TARGET_DIRECTORY ${target}
        PROPERTIES OBJECT_DEPENDS ${base}.res)
    # The target may belong to another folder, which does not see the command above.
    add_custom_target(${target}_${name}_resources DEPENDS ${base}.res)
    add_dependencies(${target} ${target}_${name}_resources)
endfunction()

# What makes a target a module: beside this file where the library is installed.
if(NOT JW32_MODULE_START)
    set(JW32_MODULE_START ${CMAKE_CURRENT_LIST_DIR}/module_start.cpp)
endif()
