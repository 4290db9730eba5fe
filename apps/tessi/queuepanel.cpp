#include "apps/tessi/queuepanel.h"

#include "apps/tessi/queuedorders.h"
#include "apps/tessi/table.h"
#include "apps/tessi/text.h"
#include "indexui/tessimodel/liveread.h"

#include <fmt/format.h>

#include <cstddef>
#include <string>

namespace tessi {

namespace {

void addRow(Table& table, const TC::SingleQuote& quote, std::size_t position, __int64 ahead)
{
    const bool isImplied = quote.timetag == 0;
    const char* const status = isImplied ? "implied" : quote.status < 0 ? "part dealt" : "whole";
    table.add({std::to_string(position), isImplied ? "" : std::to_string(quote.seq),
               isImplied ? "" : clockTextMs(quote.timetag), std::to_string(quote.volume),
               std::to_string(quote.dealVolume), std::to_string(leftOf(quote)), std::to_string(ahead), status});
}

} // namespace

QueuePanel::QueuePanel(const recording::RecordedDay& day, const PanelOptions& options)
    : m_book(day)
    , m_isBid(options.side.value() == "bid")
    , m_price(options.price.value())
{}

Table QueuePanel::rows()
{
    Table table({{"no", true},
                 {"seq", true},
                 {"time"},
                 {"shares", true},
                 {"dealt", true},
                 {"left", true},
                 {"ahead", true},
                 {"status"}});
    const std::shared_ptr<TC::SingleQueue> level = m_book.model.getQueue(m_isBid, m_price);
    if (!level)
        return table;
    TC::SingleQueue::Quotes quotes;
    level->getQuotes(quotes);
    __int64 ahead = 0;
    for (std::size_t position = 1; const auto& [seq, shared] : quotes) {
        const TC::SingleQuote quote = TC::readLive(*shared);
        addRow(table, quote, position++, ahead);
        ahead += leftOf(quote);
    }
    m_foot = fmt::format("{} order{} with {} shares", quotes.size(), quotes.size() == 1 ? "" : "s", ahead);
    return table;
}

std::string QueuePanel::whyEmpty() const
{
    return std::string("no ") + sideName(m_isBid) + " rests at " + priceText(m_price, m_book.model.m_priceTick);
}

} // namespace tessi
