# The libraries the programs stand on. Each is found as its own package configuration or pkg-config file
# gives it; on Debian scripts/packages lists what to install.
find_package(SQLite3 3.37 REQUIRED)
find_package(pugixml REQUIRED)
find_package(CLI11 REQUIRED)

if(SPANNORY_BUILD_WINDOW)
    find_package(Qt6 6.4 REQUIRED COMPONENTS Core Gui Widgets)
endif()

find_package(PkgConfig REQUIRED)
pkg_check_modules(xlsxwriter REQUIRED IMPORTED_TARGET GLOBAL xlsxwriter)
add_library(xlsxwriter ALIAS PkgConfig::xlsxwriter)
