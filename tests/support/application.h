#pragma once

#include <QCoreApplication>

namespace tests {

// An application that shows nothing: events need one.
struct Application {
    int argc = 1;
    char name[5] = "test";
    char* argv[2] = {name, nullptr};
    QCoreApplication application{argc, argv};
};

} // namespace tests
