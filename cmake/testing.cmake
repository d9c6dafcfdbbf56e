# GoogleTest from the distribution's source package, built with the flags of the current preset.
enable_testing()
set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
set(gtest_force_shared_crt ON CACHE BOOL "" FORCE)
add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
foreach(target gtest gtest_main gmock gmock_main)
    target_compile_options(${target} PRIVATE -w)
endforeach()

# The headers that every test reads, compiled once: they take longer than most tests themselves. Not in the optimised
# Windows build, where the compiler would then warn about the library's own headers.
if(NOT WIN32)
    add_library(emendo_test_headers OBJECT ${CMAKE_CURRENT_LIST_DIR}/test_headers.cpp)
    target_link_libraries(emendo_test_headers PRIVATE gmock gtest)
    target_precompile_headers(emendo_test_headers PRIVATE
        <gmock/gmock.h> <gtest/gtest.h> <algorithm> <deque> <functional> <map> <memory> <string> <vector>)
endif()

# emendo_add_test(NAME sources... LIBS libraries...): a GoogleTest executable, run natively or in Wine.
# Extra arguments for the Wine wrapper go in WINE_ARGS; TIMEOUT is in seconds (default 120).
function(emendo_add_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "TIMEOUT" "LIBS;WINE_ARGS")
    if(NOT arg_TIMEOUT)
        set(arg_TIMEOUT 120)
    endif()
    add_executable(${name} ${arg_UNPARSED_ARGUMENTS})
    target_link_libraries(${name} PRIVATE ${arg_LIBS} gmock gtest gtest_main)
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/tests)
    if(WIN32)
        target_sources(${name} PRIVATE $<TARGET_OBJECTS:emendo_swallowed_exceptions>)
        add_test(NAME ${name} COMMAND ${PROJECT_SOURCE_DIR}/scripts/wine.sh --timeout ${arg_TIMEOUT}
                                      ${arg_WINE_ARGS} $<TARGET_FILE:${name}>
                 WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
        # The wrapper ends the program and its Wine server in time itself; this is only for the wrapper.
        math(EXPR arg_TIMEOUT "${arg_TIMEOUT} + 60")
    else()
        target_precompile_headers(${name} REUSE_FROM emendo_test_headers)
        add_test(NAME ${name} COMMAND ${name} WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
    endif()
    set_tests_properties(${name} PROPERTIES TIMEOUT ${arg_TIMEOUT})
endfunction()
