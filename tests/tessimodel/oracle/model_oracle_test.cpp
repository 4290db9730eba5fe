// The model against one that is too plain to be wrong, fed with the same streams, and compared in full after every
// step.

#include "tests/tessimodel/oracle/generator.h"
#include "tests/tessimodel/oracle/oracleruns.h"
#include "tests/tessimodel/oracle/player.h"

namespace {

using namespace tests::oracle;

constexpr int kStreams = 4000;
constexpr int kSteps = 200;

TEST(ModelOracle, shouldEqualTheNaiveModelWhenStreamsAreAnything)
{
    standin::Terminal terminal;
    prepare(terminal);
    checkStreams("rows, queues, figures and all that is kept", kStreams, [&terminal] {
        const Stream stream = *streams(kSteps);
        Counters counters;
        const std::string difference = Player(terminal, stream, counters).play();
        if (!difference.empty())
            RC_FAIL(difference);
    });
}

} // namespace
