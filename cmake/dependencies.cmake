# The libraries the programs stand on; on Debian scripts/packages lists what to install.
find_package(SQLite3 3.37 REQUIRED)
find_package(pugixml REQUIRED)
find_package(CLI11 REQUIRED)

if(SPANNORY_BUILD_WINDOW)
    find_package(Qt6 6.4 REQUIRED COMPONENTS Core Gui Widgets)
endif()

find_package(ZLIB REQUIRED)
find_path(xlsxwriter_INCLUDE_DIR xlsxwriter.h REQUIRED)
find_library(xlsxwriter_LIBRARY xlsxwriter REQUIRED)
add_library(xlsxwriter UNKNOWN IMPORTED GLOBAL)
set_target_properties(xlsxwriter PROPERTIES IMPORTED_LOCATION ${xlsxwriter_LIBRARY}
                                            INTERFACE_INCLUDE_DIRECTORIES ${xlsxwriter_INCLUDE_DIR})
if(xlsxwriter_LIBRARY MATCHES "\\${CMAKE_STATIC_LIBRARY_SUFFIX}$") # which holds nothing of what it needs itself
    target_link_libraries(xlsxwriter INTERFACE ZLIB::ZLIB)
endif()
