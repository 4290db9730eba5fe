#include "tests/tessimodel/tradelist.h"

#include <fmt/format.h>

#include <map>
#include <vector>

namespace tests {

Records dealtSingly(const std::string& clock, double price, int count)
{
    Records records;
    for (int i = 0; i < count; ++i)
        records.push_back(dealt(clock, price, 1));
    return records;
}

std::string rowsText(const QList<TC::CModelDepthTransaction::Row>& rows)
{
    std::string text;
    int position = 0;
    for (const auto& row : rows)
        text += fmt::format("{} {} {:.2f} {}h B{} S{}\n", position++, clockOf(row->time), row->price, row->hands,
                            row->buySeq, row->sellSeq);
    return text;
}

std::string directionsText(const TC::CModelDepthTransaction& model)
{
    std::string text;
    for (const auto& row : model.m_rows)
        text += fmt::format("{:.2f} {} {}\n", row->price,
                            row->tickDirection == 0 ? "0" : fmt::format("{:+}", row->tickDirection),
                            row->isUp ? "up" : "down");
    return text;
}

std::string runsText(const TC::CModelDepthTransaction& model)
{
    std::string text;
    for (const auto& row : model.m_rows)
        text +=
            fmt::format("buy {} {}h, sell {} {}h\n", row->buyRun, row->buyRunHands, row->sellRun, row->sellRunHands);
    return text;
}

std::string linksText(const TC::CModelDepthTransaction& model)
{
    std::string text;
    int position = 0;
    for (const auto& row : model.m_rows)
        text += fmt::format("{}: buy {} {}, sell {} {}\n", position++, row->prevBuyIndex, row->nextBuyIndex,
                            row->prevSellIndex, row->nextSellIndex);
    return text;
}

std::string chainsText(const TC::CModelDepthTransaction::Chains& chains)
{
    std::string text;
    for (const auto& [seq, numbers] : std::map<int, std::vector<int>>(chains.begin(), chains.end())) {
        text += fmt::format("{}:", seq);
        for (const int number : numbers)
            text += fmt::format(" {}", number);
        text += "\n";
    }
    return text;
}

std::string pairText(const TC::CModelDepthTransaction::SeqPair& pair)
{
    return fmt::format("({}, {})", pair.first, pair.second);
}

std::string pairsText(const TC::CModelDepthTransaction& model)
{
    std::string text;
    for (const auto& [second, pair] : model.m_seqPairs)
        text += clockOf(second) + " " + pairText(pair) + "\n";
    return text;
}

std::string minutesText(const TC::CModelDepthTransaction& model)
{
    std::string text;
    for (const auto& [second, number] : model.m_minuteIndex)
        text += fmt::format("{} {}\n", clockOf(second), number);
    return text;
}

void expectChains(const TC::CModelDepthTransaction& trades)
{
    int links = 0;
    for (int i = 0; i < trades.m_rowCount; ++i) {
        const auto row = trades.getData(i);
        if (const auto next = trades.getData(row->nextBuyIndex)) {
            EXPECT_EQ(next->buySeq, row->buySeq);
            EXPECT_EQ(next->prevBuyIndex, i);
            ++links;
        }
        if (const auto next = trades.getData(row->nextSellIndex)) {
            EXPECT_EQ(next->sellSeq, row->sellSeq);
            EXPECT_EQ(next->prevSellIndex, i);
            ++links;
        }
    }
    EXPECT_GT(links, 0);
}

} // namespace tests
