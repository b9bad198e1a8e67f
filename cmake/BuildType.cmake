# A build without a type is optimised, because a library without optimisation is of no use. This applies only
# when the library is built on its own: a host decides on the type of its build.
get_property(is_multi_config GLOBAL PROPERTY GENERATOR_IS_MULTI_CONFIG)
if(PROJECT_IS_TOP_LEVEL AND NOT is_multi_config AND CMAKE_BUILD_TYPE STREQUAL "")
    message(STATUS "No build type: RelWithDebInfo")
    set(CMAKE_BUILD_TYPE RelWithDebInfo CACHE STRING "The type of the build" FORCE)
    set_property(CACHE CMAKE_BUILD_TYPE PROPERTY STRINGS Debug Release RelWithDebInfo MinSizeRel)
endif()
