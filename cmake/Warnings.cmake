# Strict for us, invisible to everybody else, whose compiler may be one that nobody tried.
add_library(vexa_warnings INTERFACE)
if(VEXATRANSFERLIB_DEVELOPER)
    target_compile_options(vexa_warnings INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
endif()
