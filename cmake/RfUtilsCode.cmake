# rfutils_code(target): the compiler options of all our code.
function(rfutils_code target)
    # A contracted multiply-add rounds once instead of twice: results would depend on the processor.
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -ffp-contract=off)
    if(RFUTILS_WERROR)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
endfunction()

# rfutils_product(target): those and the ones of installed files.
function(rfutils_product target)
    rfutils_code(${target})
    rfutils_hardening(${target})
    rfutils_reproducible(${target})
    set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
    target_compile_definitions(${target} PRIVATE QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII)
endfunction()
