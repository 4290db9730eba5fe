#include "utils/threadname.h"

#include <boost/thread/thread.hpp>
#include <gtest/gtest.h>
#include <pthread.h>

#include <future>
#include <tuple>

namespace {

std::string nameOf(pthread_t thread)
{
    char name[64] = "";
    pthread_getname_np(thread, name, sizeof name);
    return name;
}

} // namespace

TEST(ThreadName, shouldNameARunningThreadAndCutWhenOver15Bytes)
{
    std::promise<void> end;
    boost::thread thread([&end] { end.get_future().wait(); });
    for (const auto& [name, expected] : {std::pair{"short", "short"},
                                         {"fifteen bytes..", "fifteen bytes.."},
                                         {"modelTransDistribution", "modelTransDistr"}}) {
        utils::setThreadName(thread.native_handle(), name);
        EXPECT_EQ(nameOf(thread.native_handle()), expected);
    }
    end.set_value();
    thread.join();
}

TEST(ThreadName, shouldDoNothingWhenThereIsNoThread)
{
    boost::thread none;
    const std::string own = nameOf(pthread_self());
    utils::setThreadName(none.native_handle(), "nobody");
    EXPECT_EQ(nameOf(pthread_self()), own);
}
