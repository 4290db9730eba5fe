#include <gtest/gtest.h>

#include <cstdlib>

// Qt's dates work in the zone of the process, the exchanges at UTC+8: the zone is set before the first Qt call.
int main(int argc, char** argv)
{
    setenv("TZ", "Asia/Shanghai", 1);
    setenv("RC_PARAMS", "max_success=500", 0); // property tests: more cases than the default
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
