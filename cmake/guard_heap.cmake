# A heap that catches a byte too far or too late (tests/support/guard_heap.h). It takes the place of malloc in what is
# linked with it: a second copy of the module that the tests load, and with this option everything.
option(EMENDO_GUARD_HEAP "Link the guard heap into the module and every program" OFF)
if(WIN32)
    add_library(emendo_guard_heap STATIC ${PROJECT_SOURCE_DIR}/tests/support/guard_heap.cpp)
    target_include_directories(emendo_guard_heap PUBLIC ${PROJECT_SOURCE_DIR}/tests)
    # Where libraries alone allocate, too.
    target_link_options(emendo_guard_heap INTERFACE -Wl,--undefined=_malloc)
    if(EMENDO_GUARD_HEAP)
        link_libraries(emendo_guard_heap)
    endif()
endif()
