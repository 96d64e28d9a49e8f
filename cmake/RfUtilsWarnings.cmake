# rfutils_warnings(target): enables the warnings that our code has to be free of.
function(rfutils_warnings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
    if(RFUTILS_WERROR)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
endfunction()
