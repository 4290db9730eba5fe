#include "standin/handstrand.h"

namespace standin {

HandStrand::HandStrand()
    : m_strand(m_context)
{}

bool HandStrand::drain()
{
    if (m_running.exchange(true))
        return false;
    struct Done {
        std::atomic<bool>& running;
        ~Done() { running = false; }
    } const done{m_running};

    m_context.restart();
    return m_context.poll() > 0;
}

} // namespace standin
