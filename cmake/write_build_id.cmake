# Writes HEADER with the VERSION and the build id of the tree SOURCE: the commit, "-changed" behind it when files differ
# from that commit, "none" outside a repository. It depends on nothing else, so that equal sources give equal programs.
set(build none)
find_program(git git)
if(git)
    execute_process(COMMAND ${git} -C ${SOURCE} rev-parse --show-toplevel
        OUTPUT_VARIABLE top OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
    file(REAL_PATH ${SOURCE} source)
    # A tree that was unpacked inside somebody else's repository has no commit of its own.
    if(top STREQUAL source)
        execute_process(COMMAND ${git} -C ${SOURCE} describe --always --exclude=* --abbrev=12 --dirty=-changed
            OUTPUT_VARIABLE described OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET RESULT_VARIABLE failed)
        if(NOT failed)
            set(build ${described})
        endif()
    endif()
endif()
string(REGEX MATCHALL "[0-9]+" numbers "${VERSION}.0.0.0")
list(SUBLIST numbers 0 4 numbers)
list(JOIN numbers ", " numbers)
file(CONFIGURE OUTPUT ${HEADER} CONTENT [[// Made by the build.
#define EMENDO_VERSION "@VERSION@"
#define EMENDO_VERSION_NUMBERS @numbers@
#define EMENDO_BUILD "@build@"
]] @ONLY)
