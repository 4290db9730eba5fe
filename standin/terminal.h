#pragma once

#include "standin/answers.h"
#include "standin/instrumentdescription.h"
#include "standin/instruments.h"
#include "standin/log.h"
#include "standin/strands.h"
#include "terminal_api.h"

class QString;

namespace standin {

// The running terminal, and the one object that resets it: everything is as new after the constructor, and nothing
// is left of a test after the destructor. One at a time in a process; the services also answer without one, as
// a terminal that knows no instrument and writes no log.
//
// The destructor first ends the strands: on the pool it waits for the tasks that are queued, by hand it drops them.
// Signal connections belong to their receivers and stay.
class TERMINAL_API Terminal {
public:
    // Throws std::logic_error while there is another one.
    Terminal();
    ~Terminal();
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    Instruments instruments;
    Strands strands;
    Answers answers;
    Log log;

    // Emits CFormulaManager's sigTradeDataChange on the calling thread.
    void changeTradeData(const QString& what);
};

} // namespace standin
