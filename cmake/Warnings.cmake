# Warnings for the project's own code. Tests get the same set less the
# conversion warnings, which fire on every comparison of mixed widths in
# assertions.
function(rw_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
  # GCC 12 at -O3 (the Windows build) takes a string built from a literal and
  # a temporary for overlapping copies; the warning is wrong there, so it
  # stays a warning.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(${target} PRIVATE -Wno-error=restrict)
  endif()
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
