# What a Windows program carries inside: its version, its manifest (long paths, sharp text on every monitor, UTF-8 as
# the code page) and, where there is one, its icon.
enable_language(RC)

function(add_windows_resources target description)
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

add_windows_resources(spannory-scan "Spannory for the console")
if(TARGET spannory)
    add_windows_resources(spannory "Spannory disk-usage analyser")
endif()
