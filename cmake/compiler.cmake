# One set of rules for both builds. Records hold 4-byte pointers, so both are 32-bit. Floating point goes through
# SSE2 in both: the x87 registers would carry extra digits into tick tests and rounding.
add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Woverloaded-virtual -Werror -msse2 -mfpmath=sse)

if(WIN32)
    # Hosts built by other compilers call in with a 4-byte aligned stack.
    add_compile_options(-mstackrealign -finput-charset=UTF-8)
    add_compile_definitions(WINVER=0x0601 _WIN32_WINNT=0x0601 NOMINMAX WIN32_LEAN_AND_MEAN)
    add_link_options(-static -static-libgcc -static-libstdc++)
    # What is shipped: nothing that nobody calls, and the same bytes wherever and whenever it is built, so no path of the
    # machine and no time in it. Data stays in common sections: in sections of its own, zeros would be written to the file.
    set(part "$<TARGET_PROPERTY:SOURCE_DIR>")
    set(shipped "$<OR:$<PATH:IS_PREFIX,${PROJECT_SOURCE_DIR}/src,${part}>,$<PATH:IS_PREFIX,${PROJECT_SOURCE_DIR}/host,${part}>,$<PATH:IS_PREFIX,${PROJECT_SOURCE_DIR}/probe,${part}>>")
    add_compile_options(
        "$<${shipped}:-ffile-prefix-map=${CMAKE_BINARY_DIR}=build;-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.;-ffunction-sections>")
    add_link_options("$<${shipped}:-Wl,--gc-sections;-Wl,--no-insert-timestamp>")
    option(EMENDO_LINE_TABLES "Tell debuggers which line an instruction is of" OFF)
    if(EMENDO_LINE_TABLES)
        add_compile_options(-g1)
    endif()
    string(REPLACE "-O3" "-O2" CMAKE_CXX_FLAGS_RELEASE "${CMAKE_CXX_FLAGS_RELEASE}")
    set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
else()
    set(EMENDO_SANITIZERS "address,undefined" CACHE STRING "Sanitizers of the native build; empty for none")
    add_compile_options(-m32)
    add_link_options(-m32)
    if(EMENDO_SANITIZERS)
        add_compile_options(-fsanitize=${EMENDO_SANITIZERS} -fno-sanitize-recover=all -fno-omit-frame-pointer)
        add_link_options(-fsanitize=${EMENDO_SANITIZERS})
    else()
        # Where strings are put together, g++ 12 sees overlapping copies once it optimises: a false alarm.
        add_compile_options(-Wno-restrict)
    endif()
endif()
