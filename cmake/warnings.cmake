# Warnings are errors in every build; applied per target so that third-party code builds as it is.
function(qrl_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Werror -Wno-missing-field-initializers)
endfunction()
