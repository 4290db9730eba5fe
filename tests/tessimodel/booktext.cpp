#include "tests/tessimodel/booktext.h"

#include <fmt/format.h>

#include <mutex>

namespace tests {

namespace {

std::string changeText(int change)
{
    return change == 0 ? "0" : fmt::format("{:+}", change);
}

TC::EntrustList rowsOf(const TC::EntrustRows& rows)
{
    TC::EntrustList list;
    for (const auto& [key, row] : rows)
        list.push_back(row);
    return list;
}

std::string sideText(const std::string& side, const TC::EntrustList& rows)
{
    std::string text;
    for (const auto& row : rows)
        text += side + " " + (row ? rowText(*row) : "null") + "\n";
    return text;
}

template <class Level>
std::string sideText(const std::string& side, const std::map<int, std::shared_ptr<Level>>& levels)
{
    std::string text;
    for (const auto& [key, level] : levels)
        text += fmt::format("{} {} {}\n", side, key, queueText(level));
    return text;
}

std::string quotesText(const TC::SingleQueue::Quotes& quotes)
{
    std::string text;
    for (const auto& [seq, quote] : quotes) {
        text += fmt::format("{}{}:{}", text.empty() ? "" : " ", seq, quote->volume);
        if (quote->dealVolume != 0)
            text += fmt::format("-{}", quote->dealVolume);
        if (quote->seq != seq)
            text += fmt::format("(says {})", quote->seq);
    }
    return text;
}

template <class Level>
std::string totalsText(Level& level, int orders, bool isAlive)
{
    return fmt::format("[{}] {} x{}{}", queueText(level), level.m_volume, orders, isAlive ? "" : " dead");
}

} // namespace

std::string rowText(const TC::EntrustData& row)
{
    const std::string number = row.number == -1 ? "?" : std::to_string(row.number);
    return fmt::format("{:.2f} {}h x{} ({})", row.price, row.volume, number, changeText(row.delta));
}

std::string bookText(const TC::EntrustList& bids, const TC::EntrustList& asks)
{
    return sideText("bid", bids) + sideText("ask", asks);
}

std::string bookText(const TC::EntrustRows& bids, const TC::EntrustRows& asks)
{
    return bookText(rowsOf(bids), rowsOf(asks));
}

std::string bookText(const TC::ThousandBook& book)
{
    return bookText(book.m_bidRows, book.m_askRows);
}

std::string queueText(const std::shared_ptr<TC::SingleQueue>& level)
{
    return level ? queueText(*level) : "none";
}

std::string queueText(const std::shared_ptr<TC::OrderQueue>& level)
{
    return level ? queueText(*level) : "none";
}

std::string queueText(TC::SingleQueue& level)
{
    TC::SingleQueue::Quotes quotes;
    level.getQuotes(quotes);
    return quotesText(quotes);
}

std::string queueText(TC::OrderQueue& level)
{
    const std::lock_guard held(level.m_mutex);
    return quotesText(level.m_quotes);
}

std::string totalsText(TC::SingleQueue& level)
{
    return totalsText(level, level.m_number, level.m_active);
}

std::string totalsText(TC::OrderQueue& level)
{
    return totalsText(level, level.m_count, level.m_valid);
}

std::string levelText(TC::SingleQueue& level)
{
    return fmt::format("[{}] {} x{} ({}){}", queueText(level), level.m_volume, level.m_number,
                       changeText(level.m_lastChange), level.m_active ? "" : " dead");
}

std::string levelsText(const TC::ThousandBook& book)
{
    return sideText("bid", book.m_bidLevels) + sideText("ask", book.m_askLevels);
}

std::string levelsText(const TC::QueueBook& book)
{
    return sideText("bid", book.m_bidLevels) + sideText("ask", book.m_askLevels);
}

} // namespace tests
