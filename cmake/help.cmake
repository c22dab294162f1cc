# The help: its pages for the program's own help window and, if chmcmd (from Free Pascal) is found, compiled into
# spannory.chm. In the build tree they are beside the program.

set(help_sources ${CMAKE_SOURCE_DIR}/assets/help)
file(GLOB help_pages CONFIGURE_DEPENDS ${help_sources}/*.html ${help_sources}/*.css ${help_sources}/*.hhc)
file(GLOB help_project CONFIGURE_DEPENDS ${help_sources}/*.hhp ${help_sources}/*.hhk)

set(help_folder ${CMAKE_BINARY_DIR}/bin/help)
set(help_results ${CMAKE_BINARY_DIR}/help-pages.stamp)
add_custom_command(
    OUTPUT ${help_results}
    COMMAND ${CMAKE_COMMAND} -E rm -rf ${help_folder}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${help_folder}
    COMMAND ${CMAKE_COMMAND} -E copy ${help_pages} ${help_folder}
    COMMAND ${CMAKE_COMMAND} -E touch ${help_results}
    DEPENDS ${help_pages}
    COMMENT "Copying the help pages"
    VERBATIM)

# It reads its files from the current folder and writes the result there.
find_program(CHMCMD_PROGRAM chmcmd)
if(CHMCMD_PROGRAM)
    set(compiled_help ${CMAKE_BINARY_DIR}/bin/spannory.chm)
    set(chm_folder ${CMAKE_BINARY_DIR}/help-compile)
    file(MAKE_DIRECTORY ${chm_folder})
    add_custom_command(
        OUTPUT ${compiled_help}
        COMMAND ${CMAKE_COMMAND} -E copy ${help_pages} ${help_project} ${chm_folder}
        COMMAND ${CHMCMD_PROGRAM} --verbosity 1 spannory.hhp
        COMMAND ${CMAKE_COMMAND} -E copy spannory.chm ${compiled_help}
        DEPENDS ${help_pages} ${help_project}
        WORKING_DIRECTORY ${chm_folder}
        COMMENT "Compiling the help"
        VERBATIM)
    list(APPEND help_results ${compiled_help})
    install(FILES ${compiled_help} DESTINATION ${CMAKE_INSTALL_DATADIR}/spannory)
else()
    message(STATUS "chmcmd not found: spannory.chm is not made")
endif()

add_custom_target(help_files ALL DEPENDS ${help_results})
add_dependencies(spannory_window help_files)

install(FILES ${help_pages} DESTINATION ${CMAKE_INSTALL_DATADIR}/spannory/help)
