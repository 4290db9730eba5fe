#include "utils/threadname.h"

#include <pthread.h>

namespace utils {

void setThreadName(boost::thread::native_handle_type thread, const std::string& name)
{
    // What the system takes, without the terminating zero.
    constexpr std::size_t kMaxBytes = 15;
    // No thread, as a boost::thread that was joined or detached gives it. One that has ended, but is not joined
    // yet, the system refuses to name: nothing is to be done then.
    if (thread != 0)
        pthread_setname_np(thread, name.substr(0, kMaxBytes).c_str());
}

} // namespace utils
