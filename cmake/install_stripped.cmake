# Installs one program without its symbols, and the symbols beside it for a debugger: FROM is the built file, TO the
# folder of the program, SYMBOLS that of the symbols. The copies keep the time that the linker wrote, which is none: the
# same program has the same bytes whenever it is installed.
get_filename_component(name ${FROM} NAME)
file(MAKE_DIRECTORY ${TO} ${SYMBOLS})
set(symbols ${SYMBOLS}/${name}.debug)
execute_process(COMMAND ${OBJCOPY} --preserve-dates --only-keep-debug ${FROM} ${symbols} COMMAND_ERROR_IS_FATAL ANY)
file(CHMOD ${symbols} PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
execute_process(COMMAND ${OBJCOPY} --preserve-dates --strip-all --add-gnu-debuglink=${symbols} ${FROM} ${TO}/${name}
    COMMAND_ERROR_IS_FATAL ANY)
