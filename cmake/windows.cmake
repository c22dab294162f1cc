# The toolchain for Windows programs on a Debian machine: MinGW-w64 with POSIX threads. The libraries for Windows
# are those that packaging/windows/libraries has built.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(compiler x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${compiler}-gcc-posix)
set(CMAKE_CXX_COMPILER ${compiler}-g++-posix)
set(CMAKE_RC_COMPILER ${compiler}-windres)

# Programs that need no DLL beside Windows' own.
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)

if(DEFINED ENV{SPANNORY_CACHE})
    set(SPANNORY_WINDOWS_CACHE $ENV{SPANNORY_CACHE}/windows)
else()
    set(SPANNORY_WINDOWS_CACHE $ENV{HOME}/.cache/spannory/windows)
endif()
set(CMAKE_FIND_ROOT_PATH /usr/${compiler} ${SPANNORY_WINDOWS_CACHE}/libraries ${SPANNORY_WINDOWS_CACHE}/qt)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Qt's own tools are this machine's.
set(QT_HOST_PATH /usr)
set(QT_HOST_PATH_CMAKE_DIR /usr/lib/${CMAKE_HOST_SYSTEM_PROCESSOR}-linux-gnu/cmake)

# What runs the tests.
find_program(wine_program wine64 PATHS /usr/lib/wine)
if(wine_program)
    set(CMAKE_CROSSCOMPILING_EMULATOR ${wine_program})
endif()
