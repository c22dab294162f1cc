# The warnings are the same with every compiler. They are errors only with GCC 12, which the checks of a change run
# with (Debian 12): what a newer compiler has to say must not keep anybody from building.
# CMAKE_COMPILE_WARNING_AS_ERROR makes them errors with any.
option(SPANNORY_WERROR "Treat warnings as errors, where the compiler is GCC 12 or older" OFF)

include(CheckCXXCompilerFlag)

set(warning_flags -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # It takes "literal" + std::string for an overlapping copy (GCC's bug 105651); later ones do not.
    list(APPEND warning_flags -Wno-restrict)
    if(SPANNORY_WERROR)
        list(APPEND warning_flags -Werror)
    endif()
endif()

add_library(spannory_warnings INTERFACE)
foreach(flag IN LISTS warning_flags)
    string(MAKE_C_IDENTIFIER "compiler_knows${flag}" known)
    check_cxx_compiler_flag(${flag} ${known})
    if(${known})
        target_compile_options(spannory_warnings INTERFACE ${flag})
    endif()
endforeach()
