#include "utils/csingletont_impl.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

struct Service {
    Service() { ++s_made; }
    ~Service()
    {
        ++s_gone;
        if (s_atEnd)
            std::exchange(s_atEnd, nullptr)();
    }

    static inline int s_made = 0;
    static inline int s_gone = 0;
    static inline std::function<void()> s_atEnd;
};

} // namespace

template struct utils::CSingletonT<Service>;

namespace {

using Singleton = utils::CSingletonT<Service>;

class SingletonTest : public ::testing::Test {
protected:
    SingletonTest()
    {
        Singleton::release();
        Service::s_made = Service::s_gone = 0;
    }
};

TEST_F(SingletonTest, shouldGiveTheSameObjectWhenAskedAgain)
{
    EXPECT_EQ(Service::s_made, 0) << "made at the first call";
    EXPECT_EQ(Singleton::instance(), Singleton::instance());
    EXPECT_EQ(Service::s_made, 1);
}

TEST_F(SingletonTest, shouldMakeANewObjectWhenReleased)
{
    const auto held = Singleton::instance();
    Singleton::release();
    EXPECT_EQ(Service::s_gone, 0) << "a holder keeps it alive";
    EXPECT_NE(Singleton::instance(), held);
    Singleton::release();
    EXPECT_EQ(Service::s_gone, 1);
    Singleton::release();
    EXPECT_EQ(Service::s_gone, 1);
}

TEST_F(SingletonTest, shouldNotBlockWhenDestructorAsksForTheInstance)
{
    Singleton::instance();
    Service::s_atEnd = [] { EXPECT_NE(Singleton::instance(), nullptr); };
    Singleton::release();
    EXPECT_EQ(Service::s_made, 2);
    EXPECT_EQ(Service::s_gone, 1);
}

} // namespace
