#pragma once

#include "terminal_api.h"

#include <string>

namespace standin {

// The strands behind RPCEngine. Safe from any thread.
//
// A strand stays valid for whoever holds it, also after a reset or a change between pool and hand. It is dead then:
// what is posted to it never runs, and is freed with the strand's last holder; a task that holds its own dead
// strand is freed at the end of the process. So ask for strands (make models) after choosing pool or hand.
class TERMINAL_API Strands {
public:
    // Work runs on a pool of `threads` threads; so it is after a reset, with two. They start with the first strand
    // that is asked for. From one number of threads to another the strands go on.
    // Throws std::invalid_argument for no threads at all.
    void runOnPool(unsigned threads);

    // Nothing runs by itself: a test drains strand after strand by name, on its own thread, and so writes down
    // the interleaving that it wants. A reset drops the tasks that were not drained; no other thread may post then.
    void runByHand();

    // By hand: runs all that is queued on the strand, also what the tasks post to it meanwhile. False when nothing
    // was, for a name that nobody asked for, and while the strand is already being drained. What a task throws comes
    // out here, and the tasks behind it stay queued. Throws std::logic_error on the pool.
    bool drain(const std::string& name);

    // On the pool: waits until every strand is empty and idle at once, tasks that tasks post to other strands
    // included. Tasks that other threads post meanwhile are waited for as long as they keep the pool busy.
    // By hand nothing would empty the strands: throws std::logic_error. Throws it on a thread of the pool as well,
    // which would wait for itself. A task that throws on the pool ends the process.
    void waitIdle();
};

} // namespace standin
