# Strict for us, invisible to whoever builds the library as a part of something else.
add_library(vexa_warnings INTERFACE)
if(VEXATRANSFERLIB_DEVELOPER)
    target_compile_options(vexa_warnings INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
endif()
