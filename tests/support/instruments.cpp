#include "tests/support/instruments.h"

#include "utils/stockkey.h"

namespace tests {

QString keyOf(const std::string& market, const std::string& code)
{
    return QString::fromStdString(utils::zlStockKey(market, code));
}

} // namespace tests
