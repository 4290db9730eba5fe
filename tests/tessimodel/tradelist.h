#pragma once

#include "indexui/tessimodel/cmodeldepthholographic.h"
#include "tests/support/instruments.h"
#include "tests/tessimodel/bookfeed.h"
#include "tests/tessimodel/listfilter.h"

#include <gtest/gtest.h>

#include <boost/make_shared.hpp>

#include <set>
#include <string>

namespace tests {

// A list of trades whose single steps a test can take.
template <class List>
class Opened : public List {
public:
    using List::append;
    using List::doEntrust;
    using List::doQuoter;
    using List::doTransaction;
    using List::passFilter;
    using List::tryMatch;
};

using TradeList = Opened<TC::CModelDepthTransaction>;
using TradeView = Opened<TC::CModelDepthHolographic>;

// A trade between orders 1 and 2, in hands of 100 shares.
inline Trade dealt(const std::string& clock, double price, __int64 hands)
{
    return fill(1, 2).time(clock).at(price).shares(hands * 100);
}

// That many trades of one hand.
Records dealtSingly(const std::string& clock, double price, int count);

// A kept snapshot, with the volume of the day in hands.
inline Snapshot<quoter::QuoterDepthData> snapshot(const std::string& clock, double lastPrice, __int64 volume)
{
    return level2(clock).last(lastPrice).volume(volume);
}

// A time of the test day in seconds, as rows and keys hold it.
inline int secondOf(const std::string& clock)
{
    return static_cast<int>(timeOf(clock) / 1000);
}

// The rows with their positions:
//     0 09:30:01 10.00 3h B1 S2
std::string rowsText(const QList<TC::CModelDepthTransaction::Row>& rows);

// How each row's price moved:
//     10.01 +1 up
std::string directionsText(const TC::CModelDepthTransaction& model);

// How many rows of its orders each row directly follows, and the hands of that run:
//     buy 1 3h, sell 0 2h
std::string runsText(const TC::CModelDepthTransaction& model);

// The row before and the row after each row in its two chains:
//     0: buy -1 2, sell -1 -1
std::string linksText(const TC::CModelDepthTransaction& model);

// The row numbers of each order, by seq:
//     7: 0 2 5
std::string chainsText(const TC::CModelDepthTransaction::Chains& chains);

// The pairs, by second:
//     09:30:03 (0, 2)
std::string pairsText(const TC::CModelDepthTransaction& model);
std::string pairText(const TC::CModelDepthTransaction::SeqPair& pair);

// The first row number of each minute:
//     09:30:00 0
std::string minutesText(const TC::CModelDepthTransaction& model);

// That every link leads to a row of the same order, which links back.
void expectChains(const TC::CModelDepthTransaction& trades);

// A model that follows SZ 000001, with hands of 100 shares, a tick of 0.01 and a last close of 10.00, and its feed.
template <class List>
class TradesTest : public ::testing::Test {
protected:
    TradesTest() { model->setStock(keyOf("SZ", "000001")); }

    // Follows that instrument from now on, and is fed with it. Returns its record.
    std::shared_ptr<ztservice::CInstrumentDetail> follow(const standin::InstrumentDescription& description)
    {
        auto detail = terminal.instruments.add(description);
        model->setStock(keyOf(description.market, description.code));
        feed.request(description.market, description.code);
        return detail;
    }

    void filter(TC::SDepthFilterParam wanted) { model->setFilterParam(wanted); }

    // Whether rows or pairs changed since this was last asked.
    bool tookChange() { return model->m_changed.exchange(false); }

    BookTerminal terminal;
    boost::shared_ptr<List> model = boost::make_shared<List>();
    BookFeed<List> feed{terminal, *model};
};

using TradeListTest = TradesTest<TradeList>;
using TradeViewTest = TradesTest<TradeView>;

} // namespace tests
