#pragma once

#include "terminal_api.h"
#include "utils/csingletont.h"

#include <boost/asio/io_context_strand.hpp>
#include <boost/asio/io_service.hpp>
#include <boost/shared_ptr.hpp>

#include <string>

namespace net {

// The terminal's workers. Reached by utils::CSingletonT<RPCEngine>. Safe from any thread.
class TERMINAL_API RPCEngine {
public:
    // The strand of that name, the same one at every call: it runs what is posted one task at a time, in posting
    // order, and never within the call that posts. Never null, also while the terminal shuts down, when what is
    // posted may not run any more. Two names in use by the models: "modulegroup" for their
    // work, "data_release" to destroy what they have let go of.
    boost::shared_ptr<boost::asio::io_service::strand> getStrand(const std::string& name);
};

} // namespace net

namespace utils {
extern template struct TERMINAL_API CSingletonT<net::RPCEngine>;
} // namespace utils
