#include "apps/tessi/queuepanel.h"

#include "apps/tessi/table.h"
#include "apps/tessi/text.h"
#include "indexui/tessimodel/liveread.h"

#include <string>

namespace tessi {

namespace {

void addRow(Table& table, const TC::SingleQuote& quote)
{
    const bool isImplied = quote.timetag == 0;
    const char* const status = isImplied ? "implied" : quote.status < 0 ? "part dealt" : "whole";
    table.add({isImplied ? "" : std::to_string(quote.seq), isImplied ? "" : clockTextMs(quote.timetag),
               std::to_string(quote.volume), std::to_string(quote.dealVolume),
               std::to_string(quote.volume - quote.dealVolume), status});
}

} // namespace

QueuePanel::QueuePanel(const recording::RecordedDay& day, const PanelOptions& options)
    : m_book(day)
    , m_isBid(options.side.value() == "bid")
    , m_price(options.price.value())
{}

Table QueuePanel::rows()
{
    Table table({{"seq", true}, {"time"}, {"shares", true}, {"dealt", true}, {"left", true}, {"status"}});
    const std::shared_ptr<TC::SingleQueue> level = m_book.model.getQueue(m_isBid, m_price);
    if (!level)
        return table;
    TC::SingleQueue::Quotes quotes;
    level->getQuotes(quotes);
    for (const auto& [seq, quote] : quotes)
        addRow(table, TC::readLive(*quote));
    return table;
}

std::string QueuePanel::whyEmpty() const
{
    return std::string("no ") + (m_isBid ? "bid" : "ask") + " rests at " + priceText(m_price, m_book.model.m_priceTick);
}

} // namespace tessi
