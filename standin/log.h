#pragma once

#include "terminal_api.h"

#include <string>
#include <vector>

namespace standin {

// The log behind g_ZTStdLogger, kept in memory. Lines may be written and read from any thread.
class TERMINAL_API Log {
public:
    struct Line {
        int level = 0;
        std::string text;     // UTF-8; in a process whose locale is not, log4cxx has put '?' for all but ASCII
        std::string file;     // as the writer's LocationInfo has it
        std::string function; // with class and namespaces, without return type and arguments
        int line = 0;
    };

    // What is written from now on, and at which level: 20000 is INFO. After a reset the log is on at INFO. The
    // level is set on the logger's parent; the logger's own is never set.
    // Throws std::invalid_argument for a number that is none of log4cxx's levels.
    void setLevel(int level);

    // g_ZTStdLogger becomes null, and is there again. The pointer has no lock: for moments in which no other
    // thread reads it.
    void unset();
    void set();

    std::vector<Line> lines() const;
    void forget();
};

} // namespace standin
