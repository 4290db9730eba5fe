#pragma once

#include "standin/strandcontext.h"

#include <boost/asio/io_context_strand.hpp>

#include <atomic>

namespace standin {

// A strand that runs nothing by itself. Posting to it is safe from any thread.
class HandStrand {
public:
    HandStrand();
    HandStrand(const HandStrand&) = delete;
    HandStrand& operator=(const HandStrand&) = delete;

    boost::asio::io_context::strand& strand() { return m_strand; }

    // Runs all that is queued on the calling thread, also what the tasks post meanwhile. False when nothing was, and
    // while another call is under way: a strand runs one task at a time. What a task throws leaves here; the tasks
    // behind it stay queued.
    bool drain();

    // Frees all tasks without running them, for good: the strand runs nothing any more. Not while others post.
    void discard() { m_context.discard(); }

private:
    StrandContext m_context;
    boost::asio::io_context::strand m_strand;
    std::atomic<bool> m_running{false};
};

} // namespace standin
