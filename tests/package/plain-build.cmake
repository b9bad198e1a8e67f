# Configures the library as a user does, without a preset: the build is optimised, no warning is an error, and a newer
# language standard of the user's is kept.
#   SOURCE the library's sources, WORK an empty folder, GENERATOR, COMPILER
file(REMOVE_RECURSE "${WORK}")

# Fails unless the commands that compile the library contain WANTED and do not contain UNWANTED.
function(vexa_expect_commands wanted unwanted)
    execute_process(
        COMMAND "${CMAKE_COMMAND}" -G "${GENERATOR}" -S "${SOURCE}" -B "${WORK}" "-DCMAKE_CXX_COMPILER=${COMPILER}"
            -DCMAKE_EXPORT_COMPILE_COMMANDS=ON -DVEXATRANSFERLIB_BUILD_TESTS=OFF ${ARGN}
        ERROR_VARIABLE errors COMMAND_ERROR_IS_FATAL ANY)
    file(STRINGS "${WORK}/compile_commands.json" commands REGEX "\"command\".*GpxParser\\.cpp")
    if(NOT commands MATCHES " ${wanted} " OR commands MATCHES "${unwanted}" OR errors)
        message(FATAL_ERROR "With \"${ARGN}\" the library is compiled by ${commands}\n${errors}")
    endif()
endfunction()

vexa_expect_commands("-O2 .*-std=c\\+\\+20" "-Werror")
vexa_expect_commands("-O3 .*-std=c\\+\\+(23|2b)" "-O2" -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_STANDARD=23)
vexa_expect_commands("-std=c\\+\\+20" "-std=c\\+\\+98" -DCMAKE_CXX_STANDARD=98)
vexa_expect_commands("(-Werror .*-std=c\\+\\+20|-std=c\\+\\+20 .*-Werror)" "-std=c\\+\\+17" -DCMAKE_CXX_STANDARD=17 -DVEXATRANSFERLIB_DEVELOPER=ON)
