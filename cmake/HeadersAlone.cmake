# Compiles every header of the product by itself: what a header needs, it includes.

file(GLOB_RECURSE headers RELATIVE ${CMAKE_SOURCE_DIR} CONFIGURE_DEPENDS
    apps/*.h bench/*.h exchange/*.h indexui/*.h recording/*.h standin/*.h terminal/*.h tests/*.h)

set(sources)
foreach(header ${headers})
    string(MAKE_C_IDENTIFIER ${header} name)
    set(source ${CMAKE_BINARY_DIR}/headers_alone/${name}.cpp)
    # The header comes twice, so that a missing #pragma once is found too.
    file(CONFIGURE OUTPUT ${source} CONTENT "#include \"${header}\"\n#include \"${header}\"\n")
    list(APPEND sources ${source})
endforeach()

add_library(headers_alone OBJECT ${sources})
target_link_libraries(headers_alone PRIVATE terminal_ui nlohmann_json::nlohmann_json GTest::gtest tessi_settings)
target_compile_options(headers_alone PRIVATE -O0)
