# What makes a fault in memory hard to use, with every compiler that knows it. scripts/check-style looks for it in the
# built programs. Builds with sanitizers do without: those bring their own checks.
include(CheckCXXCompilerFlag)
include(CheckPIESupported)

add_library(spannory_hardening INTERFACE)
if(NOT CMAKE_CXX_FLAGS MATCHES "-fsanitize")
    set(hardening_flags -fstack-protector-strong -fcf-protection)
    if(NOT WIN32) # there, large frames are probed anyway, and GCC 12 fails in it
        list(APPEND hardening_flags -fstack-clash-protection)
    endif()
    foreach(flag IN LISTS hardening_flags)
        string(MAKE_C_IDENTIFIER "compiler_knows${flag}" known)
        check_cxx_compiler_flag(${flag} ${known})
        if(${known})
            target_compile_options(spannory_hardening INTERFACE ${flag})
        endif()
    endforeach()
    if(WIN32)
        target_link_options(spannory_hardening INTERFACE -fstack-protector-strong
                            LINKER:--dynamicbase,--nxcompat,--high-entropy-va)
    else()
        # The C library's checks need an optimizing compiler.
        target_compile_options(spannory_hardening INTERFACE
                               $<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=3>)
        target_link_options(spannory_hardening INTERFACE LINKER:-z,relro,-z,now)
        check_pie_supported(LANGUAGES CXX)
        set(CMAKE_POSITION_INDEPENDENT_CODE ON)
    endif()
endif()
