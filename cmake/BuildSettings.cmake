# One place for what every target of ours is compiled with.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)

find_program(CCACHE ccache)
if(CCACHE)
    # Paths are hashed relative to the tree, so that a second checkout finds what the first one compiled.
    set(CMAKE_CXX_COMPILER_LAUNCHER
        ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1 ${CCACHE})
endif()

add_library(tessi_settings INTERFACE)
target_compile_options(tessi_settings INTERFACE
    -Wall -Wextra -Wpedantic -Werror
    -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast -Wnon-virtual-dtor -Woverloaded-virtual)
# g++ 12 sees an overlap in the inlined concatenation of a literal and a std::string where there is none.
target_compile_options(tessi_settings INTERFACE -Wno-restrict)
target_include_directories(tessi_settings INTERFACE ${CMAKE_SOURCE_DIR})

set(TESSI_SANITIZE "" CACHE STRING "Sanitizers, as -fsanitize takes them")
if(TESSI_SANITIZE)
    add_compile_options(-fsanitize=${TESSI_SANITIZE} -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${TESSI_SANITIZE})
    if(TESSI_SANITIZE MATCHES "thread")
        # Asio's fences are not seen by ThreadSanitizer. What they order is ordered by the strands' mutexes as well.
        add_compile_options(-Wno-tsan)
    endif()
    if(TESSI_SANITIZE MATCHES "undefined")
        add_compile_options(-fsanitize=float-cast-overflow -fno-sanitize-recover=all)
    endif()
endif()
