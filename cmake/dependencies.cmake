# The libraries that the programs use; scripts/packages lists the Debian packages.
find_package(SQLite3 3.37 REQUIRED)
find_package(pugixml REQUIRED)
find_package(CLI11 REQUIRED)

if(SPANNORY_BUILD_WINDOW)
    find_package(Qt6 6.4 REQUIRED COMPONENTS Core Gui Widgets)
    # What the code does without: among it all that is deprecated up to Qt 6.8 (Debian 13's).
    set(SPANNORY_QT_RULES QT_NO_CAST_FROM_ASCII QT_NO_KEYWORDS QT_DISABLE_DEPRECATED_UP_TO=0x060800)
endif()

find_package(ZLIB REQUIRED)
find_package(CURL 7.85 REQUIRED)
find_path(xlsxwriter_INCLUDE_DIR xlsxwriter.h REQUIRED)
find_library(xlsxwriter_LIBRARY xlsxwriter REQUIRED)
add_library(xlsxwriter UNKNOWN IMPORTED GLOBAL)
set_target_properties(xlsxwriter PROPERTIES IMPORTED_LOCATION ${xlsxwriter_LIBRARY}
                                            INTERFACE_INCLUDE_DIRECTORIES ${xlsxwriter_INCLUDE_DIR})
if(xlsxwriter_LIBRARY MATCHES "\\${CMAKE_STATIC_LIBRARY_SUFFIX}$") # does not include the libraries that it needs
    target_link_libraries(xlsxwriter INTERFACE ZLIB::ZLIB)
endif()
