option(SPANNORY_WERROR "Treat warnings as errors" OFF)

add_library(spannory_warnings INTERFACE)
target_compile_options(spannory_warnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
                                                   $<$<BOOL:${SPANNORY_WERROR}>:-Werror>)
