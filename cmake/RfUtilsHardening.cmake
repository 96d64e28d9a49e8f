# rfutils_hardening(target): in Release, RelWithDebInfo and MinSizeRel, a memory error ends the program before an
# attacker can use it. Not with the sanitizers, which find more and cannot be combined with it.
include(CheckCXXCompilerFlag)

option(RFUTILS_HARDENING "Harden the library and the command in optimised builds" ON)

# The flags of the whole build and of an enclosing project.
get_property(rfutils_foreign_flags DIRECTORY PROPERTY COMPILE_OPTIONS)
string(APPEND rfutils_foreign_flags " ${CMAKE_CXX_FLAGS}")

# Some are not for every processor or compiler; some compilers only warn about an unknown one.
set(rfutils_hardening_flags -Wformat -Werror=format-security)
if(RFUTILS_HARDENING)
    set(CMAKE_REQUIRED_FLAGS -Werror)
    foreach(flag IN ITEMS
            -fstack-protector-strong -fstack-clash-protection -fcf-protection -mbranch-protection=standard)
        string(MAKE_C_IDENTIFIER "RFUTILS_HAS${flag}" known)
        check_cxx_compiler_flag(${flag} ${known})
        if(${known})
            list(APPEND rfutils_hardening_flags ${flag})
        endif()
    endforeach()
    unset(CMAKE_REQUIRED_FLAGS)
endif()

function(rfutils_hardening target)
    if(NOT RFUTILS_HARDENING OR rfutils_foreign_flags MATCHES "-fsanitize")
        return()
    endif()
    foreach(config IN ITEMS Release RelWithDebInfo MinSizeRel)
        string(TOUPPER ${config} CONFIG)
        set(flags ${rfutils_hardening_flags})
        # _FORTIFY_SOURCE only warns without optimisation. A level chosen by the user stands; some compilers
        # define one themselves.
        if(CMAKE_CXX_FLAGS_${CONFIG} MATCHES "-O[1-9sgzf]"
                AND NOT "${rfutils_foreign_flags} ${CMAKE_CXX_FLAGS_${CONFIG}}" MATCHES "_FORTIFY_SOURCE")
            list(APPEND flags -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
        endif()
        target_compile_options(${target} PRIVATE "$<$<CONFIG:${config}>:${flags}>")
        target_link_options(${target} PRIVATE
            "$<$<CONFIG:${config}>:LINKER:-z,relro,-z,now,-z,noexecstack,-z,defs>"
            "$<$<AND:$<CONFIG:${config}>,$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>>:-pie>")
    endforeach()
endfunction()
