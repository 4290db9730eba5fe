#pragma once

#include <boost/asio/io_context.hpp>

namespace standin {

// What runs strands. Shared by whoever runs it and by every strand handed out, so that a strand whose time is over
// can still be posted to.
struct StrandContext : boost::asio::io_context {
    // Frees what is queued without running it. For when nobody runs it any more.
    void discard() { shutdown(); }
};

} // namespace standin
