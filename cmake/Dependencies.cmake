# Debian's own packages; demo.sh and test.sh install what is missing.

find_package(Qt5 5.15 REQUIRED COMPONENTS Core Gui Widgets)
find_package(Boost 1.81 REQUIRED COMPONENTS thread)
find_package(log4cxx REQUIRED)
find_package(fmt REQUIRED)
find_package(Threads REQUIRED)

if(TESSIMODEL_TERMINAL STREQUAL "standin")
    find_package(nlohmann_json REQUIRED)
    find_package(zstd REQUIRED)
    find_package(CLI11 REQUIRED)
    if(BUILD_TESTING)
        find_package(GTest REQUIRED)
        find_package(rapidcheck REQUIRED)
    endif()
endif()
