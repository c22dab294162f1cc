# What the programs take on Windows beside what they take everywhere.
target_compile_definitions(spannory_core PRIVATE NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0A00)
target_link_libraries(spannory_core PRIVATE mpr comctl32 ntdll)
set(SPANNORY_NAMES_IGNORE_CASE ON)
include(${CMAKE_SOURCE_DIR}/packaging/windows/resources.cmake)
