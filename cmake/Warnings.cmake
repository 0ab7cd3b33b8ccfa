# Warnings for the project's own code. Tests get the same set less the
# conversion warnings, which fire on every comparison of mixed widths in
# assertions.
function(rw_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
  if(RW_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
endfunction()

function(rw_test_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra)
  if(RW_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
endfunction()
