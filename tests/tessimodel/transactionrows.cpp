#include "tests/tessimodel/transactionrows.h"

#include "utils/timeutils.h"

#include <fmt/format.h>

namespace tests {

std::string rowsText(const TC::CModelTransaction& model)
{
    std::string text;
    for (const TC::TransData& row : model.m_datas) {
        const int second = utils::d8_getSecondFromZero(row.timetag);
        text += fmt::format("{:02}:{:02}:{:02} {} +{} of {} {}\n", second / 3600, second / 60 % 60, second % 60,
                            row.price, row.volume, row.totalVolume, row.isBuy ? "B" : "S");
    }
    return text;
}

} // namespace tests
