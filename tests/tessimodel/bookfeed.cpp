#include "tests/tessimodel/bookfeed.h"

#include "indexui/tessimodel/cmodeldepththousand.h"
#include "tests/support/instruments.h"

namespace tests {

BookTerminal::BookTerminal()
{
    strands.runByHand();
    instruments.add(stock("SZ", "000001"));
    instruments.add(stock("SZ", "000002"));
}

BookTerminal::~BookTerminal()
{
    utils::CSingletonT<TC::CDepthThousandModelManager>::release();
}

} // namespace tests
