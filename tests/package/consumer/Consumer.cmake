# The same program in each language standard that hosts use. vexaTransferLib_VERSION is that of the library.
enable_testing()
foreach(standard IN ITEMS 17 20)
    add_executable(consumer-${standard} "${CMAKE_CURRENT_LIST_DIR}/main.cpp")
    set_target_properties(consumer-${standard} PROPERTIES
        CXX_STANDARD ${standard} CXX_STANDARD_REQUIRED ON CXX_EXTENSIONS OFF)
    target_compile_definitions(consumer-${standard} PRIVATE
        CONSUMER_STANDARD=20${standard} "CONSUMER_VERSION=\"${vexaTransferLib_VERSION}\"")
    target_compile_options(consumer-${standard} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
    target_link_libraries(consumer-${standard} PRIVATE vexaTransferLib::vexaTransferLib)
    add_test(NAME consumer-${standard} COMMAND consumer-${standard} "consumer-${standard}.gpx")
endforeach()
