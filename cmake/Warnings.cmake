# Warnings are errors in our own code, whichever compiler builds it.
function(ql_warnings_are_errors target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Werror)
endfunction()
