# Tests are compiled without optimisation, which takes half as long. The library that they measure is
# optimised as the build requires.
add_library(vexa_test_options INTERFACE)
target_link_libraries(vexa_test_options INTERFACE vexa_warnings)
if(VEXATRANSFERLIB_FAST_TESTS)
    # Fortified functions need optimisation.
    target_compile_options(vexa_test_options INTERFACE -O0 -U_FORTIFY_SOURCE)
endif()

# The headers that take most of a test's compilation. The ordinary build does not use them, so that a missing
# include is found.
function(vexa_precompile_for_tests target)
    if(VEXATRANSFERLIB_PRECOMPILED_TESTS)
        target_precompile_headers(${target} PRIVATE
            <gmock/gmock.h> <gtest/gtest.h> <unicode/unistr.h> <functional> <map> <memory> <string> <vector> ${ARGN})
    endif()
endfunction()
