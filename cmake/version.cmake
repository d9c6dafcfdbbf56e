# Which build a program is: the project's version, and the commit that it was made from. Both stand in every program's
# version resource, through a header that is made anew by each build and written only when it changed.
set(EMENDO_GENERATED ${CMAKE_BINARY_DIR}/generated)
set(emendo_build_header ${EMENDO_GENERATED}/emendo_build.h)
add_custom_target(emendo_build_id
    COMMAND ${CMAKE_COMMAND} -D SOURCE=${PROJECT_SOURCE_DIR} -D HEADER=${emendo_build_header}
            -D VERSION=${PROJECT_VERSION} -P ${CMAKE_CURRENT_LIST_DIR}/write_build_id.cmake
    BYPRODUCTS ${emendo_build_header}
    COMMENT "")
set(emendo_version_template ${CMAKE_CURRENT_LIST_DIR}/version.rc.in)

# emendo_use_build_header(TARGET): its sources may include emendo_build.h.
function(emendo_use_build_header target)
    target_include_directories(${target} PRIVATE ${EMENDO_GENERATED})
    add_dependencies(${target} emendo_build_id)
endfunction()

# emendo_add_version(TARGET english simplified traditional): the version resource of a program or module, with what
# it is in three languages.
function(emendo_add_version target english simplified traditional)
    get_target_property(type ${target} TYPE)
    if(type STREQUAL EXECUTABLE)
        set(file ${target}.exe)
        set(file_type VFT_APP)
    else()
        set(file ${target}.dll)
        set(file_type VFT_DLL)
    endif()
    set(resource ${CMAKE_CURRENT_BINARY_DIR}/${target}_version.rc)
    configure_file(${emendo_version_template} ${resource} @ONLY)
    set_source_files_properties(${resource} PROPERTIES
        COMPILE_OPTIONS "-I${EMENDO_GENERATED}" OBJECT_DEPENDS ${emendo_build_header})
    target_sources(${target} PRIVATE ${resource})
    emendo_use_build_header(${target})
endfunction()
