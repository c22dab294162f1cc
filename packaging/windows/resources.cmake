# The resources in a Windows program: its version, its manifest (long paths, sharp text on every monitor, UTF-8 as the
# code page) and, if there is one, its icon.
enable_language(RC)

function(add_windows_resources target description)
    if(NOT TARGET ${target})
        return()
    endif()
    set(folder ${CMAKE_BINARY_DIR}/resources)
    set(manifest ${folder}/spannory.manifest)
    set(icon_line "")
    if(TARGET artwork)
        set(icon_line "1 ICON \"${CMAKE_BINARY_DIR}/artwork/spannory.ico\"")
        set_source_files_properties(${folder}/${target}.rc PROPERTIES OBJECT_DEPENDS
                                    ${CMAKE_BINARY_DIR}/artwork/spannory.ico)
        add_dependencies(${target} artwork)
    endif()
    configure_file(${CMAKE_SOURCE_DIR}/packaging/windows/spannory.manifest ${manifest} @ONLY)
    configure_file(${CMAKE_SOURCE_DIR}/packaging/windows/spannory.rc ${folder}/${target}.rc @ONLY)
    target_sources(${target} PRIVATE ${folder}/${target}.rc)
endfunction()

# Deferred until all programs are defined. The tests must run with the same code page as the programs.
cmake_language(DEFER CALL add_windows_resources spannory "Spannory disk-usage analyser")
cmake_language(DEFER CALL add_windows_resources spannory-scan "Spannory for the console")
cmake_language(DEFER CALL add_windows_resources spannory_tests "Tests of Spannory")
cmake_language(DEFER CALL add_windows_resources spannory_window_tests "Tests of Spannory's window")
