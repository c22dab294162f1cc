option(SPANNORY_WERROR "Treat warnings as errors" OFF)

add_library(spannory_warnings INTERFACE)
target_compile_options(spannory_warnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
                                                   $<$<BOOL:${SPANNORY_WERROR}>:-Werror>)

# GCC 12 takes "literal" + std::string for an overlapping copy (its bug 105651); later ones do not.
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(spannory_warnings INTERFACE -Wno-restrict)
endif()
