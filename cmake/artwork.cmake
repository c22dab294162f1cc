# The artwork: the busy animation 2.avi beside the programs, and the application's icons below icons/. The build's own
# program draws them; when cross-compiling, name one that was built for this system.
set(SPANNORY_ARTWORK_TOOL "" CACHE FILEPATH "spannory-artwork to draw with; empty builds it")

if(SPANNORY_ARTWORK_TOOL)
    set(artwork_tool ${SPANNORY_ARTWORK_TOOL})
else()
    file(GLOB artwork_sources CONFIGURE_DEPENDS assets/tool/*.cpp)
    add_executable(spannory-artwork ${artwork_sources} widgets/applicationIcon.cpp)
    target_include_directories(spannory-artwork PRIVATE ${CMAKE_SOURCE_DIR})
    target_compile_definitions(spannory-artwork PRIVATE ${SPANNORY_QT_RULES})
    target_link_libraries(spannory-artwork PRIVATE spannory_warnings Qt6::Gui)
    set_target_properties(spannory-artwork PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/artwork)
    set(artwork_tool $<TARGET_FILE:spannory-artwork>)
endif()

set(artwork_folder ${CMAKE_BINARY_DIR}/artwork)
set(artwork_icon_sizes 16 24 32 48 64 128 256 512)
set(artwork_files ${artwork_folder}/2.avi ${artwork_folder}/spannory.ico)
foreach(size IN LISTS artwork_icon_sizes)
    list(APPEND artwork_files ${artwork_folder}/icons/hicolor/${size}x${size}/apps/spannory.png)
endforeach()

add_custom_command(
    OUTPUT ${artwork_files} ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/2.avi
    COMMAND ${artwork_tool} ${artwork_folder}
    COMMAND ${CMAKE_COMMAND} -E copy ${artwork_folder}/2.avi ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/2.avi
    DEPENDS ${artwork_tool}
    COMMENT "Drawing the icons and the busy animation"
    VERBATIM)
add_custom_target(artwork ALL DEPENDS ${artwork_files} ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/2.avi)
add_dependencies(spannory_window artwork)
