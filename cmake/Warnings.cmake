# Warnings are strict for developers and have no effect for users, whose compiler may be one that was never
# tried.
add_library(vexa_warnings INTERFACE)
if(VEXATRANSFERLIB_DEVELOPER)
    target_compile_options(vexa_warnings INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
endif()
