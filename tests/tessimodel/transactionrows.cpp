#include "tests/tessimodel/transactionrows.h"

#include "tests/support/records.h"

#include <fmt/format.h>

namespace tests {

std::string rowsText(const TC::CModelTransaction& model)
{
    std::string text;
    for (const TC::TransData& row : model.m_datas) {
        text += fmt::format("{} {} +{} of {} {}\n", clockOf(row.timetag), row.price, row.volume, row.totalVolume,
                            row.isBuy ? "B" : "S");
    }
    return text;
}

} // namespace tests
