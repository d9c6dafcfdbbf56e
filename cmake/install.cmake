# What is shipped, as `cmake --install` lays it out and scripts/package.sh packs it:
#     bin/       the module, the substitute terminal, its data and scenarios
#     symbols/   what a debugger needs to read a crash of them
#     sdk/       the headers of the border and a small host that uses them
#     docs/      the pages
add_custom_target(shipped)

# emendo_install_program(TARGET...)
function(emendo_install_program)
    foreach(target ${ARGN})
        add_dependencies(shipped ${target})
        install(CODE "execute_process(COMMAND_ERROR_IS_FATAL ANY
            COMMAND \"${CMAKE_COMMAND}\" -D \"OBJCOPY=${CMAKE_OBJCOPY}\" -D \"FROM=$<TARGET_FILE:${target}>\"
                    -D \"TO=\${CMAKE_INSTALL_PREFIX}/bin\" -D \"SYMBOLS=\${CMAKE_INSTALL_PREFIX}/symbols\"
                    -P \"${PROJECT_SOURCE_DIR}/cmake/install_stripped.cmake\")")
    endforeach()
endfunction()

# All that a terminal must see of the module.
set(EMENDO_BORDER_HEADERS
    contract_key.h
    fill_record.h
    fixed_text.h
    host_interfaces.h
    host_records.h
    order_record.h
    plugin_interface.h
    trade_spi.h
    window_handle.h
)
list(TRANSFORM EMENDO_BORDER_HEADERS PREPEND ${PROJECT_SOURCE_DIR}/src/trade/)
install(FILES ${EMENDO_BORDER_HEADERS} DESTINATION sdk/include/trade)
install(DIRECTORY sdk/small_host DESTINATION sdk USE_SOURCE_PERMISSIONS)
install(CODE "execute_process(COMMAND_ERROR_IS_FATAL ANY
    COMMAND \"${PROJECT_SOURCE_DIR}/scripts/pages.sh\" \"\${CMAKE_INSTALL_PREFIX}/docs\")")
install(FILES CHANGELOG.md DESTINATION . OPTIONAL)
