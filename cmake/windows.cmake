# The toolchain for building Windows programs on Debian: MinGW-w64 with POSIX threads. packaging/windows/libraries builds
# the libraries for Windows.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

# Where things are; preset for Debian.
set(SPANNORY_MINGW x86_64-w64-mingw32 CACHE STRING "What the names of the cross-compiler's programs begin with")
set(SPANNORY_MINGW_THREADS -posix CACHE STRING "What the names of its compilers with POSIX threads end with")
set(SPANNORY_MINGW_ROOT /usr/${SPANNORY_MINGW} CACHE PATH "The folder of its headers and libraries")
set(SPANNORY_WINE_FOLDER /usr/lib/wine CACHE PATH "The folder of wine64, where it is in none that PATH names")
set(QT_HOST_PATH /usr CACHE PATH "Where this machine's Qt is, whose tools are used")
set(QT_HOST_PATH_CMAKE_DIR ${QT_HOST_PATH}/lib/${CMAKE_HOST_SYSTEM_PROCESSOR}-linux-gnu/cmake
    CACHE PATH "Where that Qt's CMake files are")
if(DEFINED ENV{SPANNORY_CACHE})
    set(cache $ENV{SPANNORY_CACHE})
else()
    set(cache $ENV{HOME}/.cache/spannory)
endif()
set(SPANNORY_WINDOWS_CACHE ${cache}/windows CACHE PATH "Where packaging/windows/libraries has put what it built")
# CMake reads this file again for each of its small trial programs.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES SPANNORY_MINGW SPANNORY_MINGW_THREADS SPANNORY_MINGW_ROOT
     SPANNORY_WINDOWS_CACHE)

set(CMAKE_C_COMPILER ${SPANNORY_MINGW}-gcc${SPANNORY_MINGW_THREADS})
set(CMAKE_CXX_COMPILER ${SPANNORY_MINGW}-g++${SPANNORY_MINGW_THREADS})
set(CMAKE_RC_COMPILER ${SPANNORY_MINGW}-windres)

# Programs that need only the DLLs of Windows itself.
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)

set(CMAKE_FIND_ROOT_PATH ${SPANNORY_MINGW_ROOT} ${SPANNORY_WINDOWS_CACHE}/libraries ${SPANNORY_WINDOWS_CACHE}/qt)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# What runs the tests.
find_program(wine_program wine64 PATHS ${SPANNORY_WINE_FOLDER})
if(wine_program)
    set(CMAKE_CROSSCOMPILING_EMULATOR ${wine_program})
endif()
