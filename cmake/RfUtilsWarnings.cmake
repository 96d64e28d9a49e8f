# rfutils_warnings(target): the warnings that our own code is kept free of.
function(rfutils_warnings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
    if(RFUTILS_WERROR)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
endfunction()
