#include "tests/tessimodel/quoterthousand.h"

#include <rapidcheck.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <utility>
#include <vector>

namespace {

using namespace tests;

using RecordPtr = std::shared_ptr<quoter::LevelThousandData>;

// A price may come twice, in any order and on both sides; volumes and prices need not be as many.
std::vector<double> somePrices()
{
    const double infinity = std::numeric_limits<double>::infinity();
    return *rc::gen::container<std::vector<double>>(
        rc::gen::element(9.99, 10.00, std::nextafter(10.00, 11), 10.01, 10.02, 0.0, -0.0, -1.0,
                         std::numeric_limits<double>::quiet_NaN(), infinity, std::numeric_limits<double>::max()));
}

std::vector<int> someVolumes()
{
    return *rc::gen::container<std::vector<int>>(
        rc::gen::weightedOneOf<int>({{9, rc::gen::inRange(0, 4)}, {1, rc::gen::arbitrary<int>()}}));
}

RecordPtr someRecord(__int64 timetag)
{
    auto record = std::make_shared<quoter::LevelThousandData>();
    record->timetag = timetag;
    record->bidPrices = somePrices();
    record->bidVolumes = someVolumes();
    record->bidNumbers = someVolumes();
    record->askPrices = somePrices();
    record->askVolumes = someVolumes();
    record->askNumbers = someVolumes();
    return record;
}

// The changes as they are told in one sentence: what the prices of two records have less.
class PlainChanges {
public:
    void take(const RecordPtr& record)
    {
        if (!m_base || record->timetag - m_base->timetag >= 1000)
            m_base = m_held;
        m_held = record;
        if (!m_base)
            return;
        const auto before = volumesOf(*m_base);
        for (const auto& [price, volume] : volumesOf(*m_held)) {
            const auto found = before.find(price);
            if (found != before.end() && found->second != volume)
                m_changes[price] = {static_cast<int>(__int64{found->second} - volume), m_held->timetag};
        }
    }

    int shownAt(double price) const
    {
        const auto found = std::isnan(price) ? m_changes.end() : m_changes.find(price);
        return found != m_changes.end() && m_held->timetag - found->second.second < 3000 ? found->second.first : 0;
    }

    std::string text() const
    {
        std::string text;
        for (const auto& [price, change] : m_changes)
            text += fmt::format("{} {} at {}\n", price + 0.0, change.first, change.second);
        return text;
    }

    // The rows of the record held: price, hands, orders and change.
    std::string rowsText() const
    {
        std::string text;
        const auto& held = *m_held;
        const std::size_t bids = std::min({held.bidPrices.size(), held.bidVolumes.size(), held.bidNumbers.size()});
        for (std::size_t i = bids; i-- > 0;)
            text += rowText(held.bidPrices[i], held.bidVolumes[i], held.bidNumbers[i], shownAt(held.bidPrices[i]));
        text += "asks\n";
        const std::size_t asks = std::min({held.askPrices.size(), held.askVolumes.size(), held.askNumbers.size()});
        for (std::size_t i = 0; i < asks; ++i)
            text += rowText(held.askPrices[i], held.askVolumes[i], held.askNumbers[i], shownAt(held.askPrices[i]));
        return text;
    }

    static std::string rowText(double price, int volume, int number, int change)
    {
        return fmt::format("{} {}h x{} ({})\n", price, volume, number, change);
    }

private:
    static std::map<double, int> volumesOf(const quoter::LevelThousandData& record)
    {
        std::map<double, int> volumes;
        addSide(volumes, record.bidPrices, record.bidVolumes);
        addSide(volumes, record.askPrices, record.askVolumes);
        return volumes;
    }

    static void addSide(std::map<double, int>& volumes, const std::vector<double>& prices,
                        const std::vector<int>& sizes)
    {
        for (std::size_t i = 0; i < prices.size() && i < sizes.size(); ++i) {
            if (!std::isnan(prices[i]))
                volumes.emplace(prices[i], sizes[i]);
        }
    }

    RecordPtr m_base;
    RecordPtr m_held;
    std::map<double, std::pair<int, __int64>> m_changes;
};

std::string changesText(const QuoterThousand& model)
{
    std::string text;
    for (auto entry = model.m_priceDeltas.begin(); entry != model.m_priceDeltas.end(); ++entry)
        text += fmt::format("{} {} at {}\n", entry.key() + 0.0, entry.value().first, entry.value().second);
    return text;
}

std::string rowsText(QuoterThousand& model)
{
    const BookReading reading = readBook(model, byRecord);
    std::string text;
    for (const auto& row : reading.bids)
        text += PlainChanges::rowText(row->price, row->volume, row->number, row->delta);
    text += "asks\n";
    for (const auto& row : reading.asks)
        text += PlainChanges::rowText(row->price, row->volume, row->number, row->delta);
    return text;
}

TEST(QuoterThousandProperty, shouldShowWhatPlainMapsShowWhenAnyRecordsCome)
{
    const bool held = rc::check("changes and rows are those of plain maps", [] {
        BookTerminal terminal;
        QuoterThousand model;
        model.setStock(keyOf("SZ", "000001"));
        BookFeed feed(terminal, model);
        PlainChanges plain;
        __int64 time = timeOf("09:30:00");
        const int records = *rc::gen::inRange(1, 12);
        for (int i = 0; i < records; ++i) {
            time += *rc::gen::element<__int64>(-1500, -1, 0, 1, 400, 600, 999, 1000, 2000, 2999, 3000);
            const RecordPtr record = someRecord(time);
            plain.take(record);
            feed.thousand(*rc::gen::element(history, moreHistory, live), {record});
            RC_ASSERT(changesText(model) == plain.text());
            RC_ASSERT(rowsText(model) == plain.rowsText());
        }
        RC_CLASSIFY(!plain.text().empty());
    });
    EXPECT_TRUE(held);
}

} // namespace
