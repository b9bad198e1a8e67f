# Registers each suite of a GoogleTest program as one test of ctest. One process for a suite, and not one for each of its
# cases, saves most of the time of a test run under the sanitizers, whose processes are slow to start.
#
#   vexa_discover_suites(unit_tests TIMEOUT 300)

if(CMAKE_SCRIPT_MODE_FILE)
    # Run after each linking, with PROGRAM, TIMEOUT and OUTPUT.
    execute_process(COMMAND "${PROGRAM}" --gtest_list_tests
        OUTPUT_VARIABLE listing RESULT_VARIABLE result)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "${PROGRAM} does not list its tests: ${result}")
    endif()
    # A suite starts its line, a case is indented; "#" starts a remark.
    string(REGEX MATCHALL "(^|\n)[A-Za-z0-9_/]+\\." suites "${listing}")
    list(TRANSFORM suites STRIP)
    list(TRANSFORM suites REPLACE "\\.$" "")
    if(suites STREQUAL "")
        message(FATAL_ERROR "${PROGRAM} has no tests")
    endif()
    set(script "")
    foreach(suite IN LISTS suites)
        string(APPEND script
            "add_test([=[${suite}]=] [=[${PROGRAM}]=] [=[--gtest_filter=${suite}.*]=])\n"
            "set_tests_properties([=[${suite}]=] PROPERTIES TIMEOUT ${TIMEOUT})\n")
    endforeach()
    file(WRITE "${OUTPUT}" "${script}")
    return()
endif()

set(VEXA_DISCOVER_SUITES "${CMAKE_CURRENT_LIST_FILE}")

function(vexa_discover_suites target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "TIMEOUT" "")
    set(list "${CMAKE_CURRENT_BINARY_DIR}/${target}-suites.cmake")
    add_custom_command(TARGET ${target} POST_BUILD
        COMMAND "${CMAKE_COMMAND}" "-DPROGRAM=$<TARGET_FILE:${target}>" "-DTIMEOUT=${arg_TIMEOUT}"
            "-DOUTPUT=${list}" -P "${VEXA_DISCOVER_SUITES}"
        BYPRODUCTS "${list}"
        VERBATIM)
    # Before the first build there is nothing to run.
    set(include "${CMAKE_CURRENT_BINARY_DIR}/${target}-tests.cmake")
    file(CONFIGURE OUTPUT "${include}" @ONLY CONTENT [=[
if(EXISTS "@list@")
    include("@list@")
else()
    add_test(@target@_NOT_BUILT @target@_NOT_BUILT)
endif()
]=])
    set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES "${include}")
endfunction()
