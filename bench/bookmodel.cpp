#include "bench/bookmodel.h"

#include "bench/modelfeed.h"
#include "Formula/metacachedatawrapper.h"
#include "indexui/tessimodel/cmodeldepththousand.h"
#include "indexui/tessimodel/updateflags.h"
#include "quoter/orderdata.h"
#include "quoter/quoterdepthdata.h"
#include "quoter/transactiondata.h"

#include <boost/make_shared.hpp>

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <stdexcept>
#include <string>

namespace bench {

namespace {

constexpr TickOptions kStream{.events = 200'000};
constexpr TickOptions kReadStream{.events = 200'000, .levels = 1150}; // about 2,000 rows
constexpr TickOptions kFullDay{.events = 1'000'000, .resting = 100'000};

using Model = TC::CModelDepthThousand;

// With a panel that keeps its rows from read to read.
struct Followed : FollowedModel<Model> {
    using FollowedModel::FollowedModel;

    bool read()
    {
        int flags = 0;
        int lastVolume = 0;
        double lastPrice = 0;
        double minPrice = std::numeric_limits<double>::max();
        double maxPrice = 0;
        double maxAmount = 0;
        return model.checkUpdate(flags, bids, asks, lastPrice, lastVolume, minPrice, maxPrice, maxAmount);
    }

    TC::EntrustList bids;
    TC::EntrustList asks;
};

std::shared_ptr<Followed> builtModel()
{
    auto followed = std::make_shared<Followed>(kReadStream);
    followed->build();
    followed->read();
    const std::size_t rows = followed->bids.size() + followed->asks.size();
    if (rows < 1900 || rows > 2100)
        throw std::logic_error("the book to be read has " + std::to_string(rows) + " rows and not about 2,000");
    return followed;
}

Body prepareIdleRead()
{
    auto followed = builtModel();
    return {[followed](int times) {
        int changes = 0;
        for (int i = 0; i < times; ++i)
            changes += followed->read() ? 1 : 0;
        if (changes > 0)
            throw std::logic_error("nothing changed, and yet there was an update");
        return times;
    }};
}

// An order one tick away from the best bid comes and goes.
Body prepareReadAfterTick()
{
    auto followed = builtModel();
    auto order = std::make_shared<quoter::OrderData>();
    order->timetag = followed->model.m_book.m_lastTimetag;
    order->price = followed->bids[followed->bids.size() - 2]->price;
    order->volume = 100;
    order->orderKind = 1;
    order->bsFlag = quoter::kSideBuy;
    order->seq = static_cast<__int64>(followed->feed.size()) * 100; // above all that came
    return {[followed, order](int times) {
        for (int i = 0; i < times; ++i) {
            int flags = 0;
            Model& model = followed->model;
            if (i % 2 == 0) {
                ++order->seq;
                model.m_book.appendOrder(model.m_stock, order, flags, true);
            } else {
                auto cancel = std::make_shared<quoter::TransactionData>();
                cancel->timetag = order->timetag;
                cancel->buySeq = static_cast<int>(order->seq);
                cancel->transKind = quoter::kTransKindCancel;
                model.m_book.appendTransaction(model.m_stock, cancel, flags, true);
            }
            model.m_updateFlags |= flags;
            if (!followed->read())
                throw std::logic_error("a level changed, and yet there was no update");
        }
        return times;
    }};
}

Body prepareReadOfSameRows()
{
    auto followed = builtModel();
    return {[followed](int times) {
        for (int i = 0; i < times; ++i) {
            followed->model.m_updateFlags |= TC::kUpdateInPlace;
            followed->read();
        }
        return times;
    }};
}

// The ten best levels of the book with half of their volume, a moment after the latest tick.
std::shared_ptr<quoter::QuoterDepthData> thinnerSnapshot(const Followed& followed)
{
    auto snapshot = std::make_shared<quoter::QuoterDepthData>();
    snapshot->timetag = followed.model.m_book.m_lastTimetag + 1;
    snapshot->tradeStatus = 13;
    for (std::size_t i = 0; i < 10; ++i) {
        const TC::EntrustData& bid = *followed.bids[followed.bids.size() - 1 - i];
        const TC::EntrustData& ask = *followed.asks[i];
        snapshot->bidPrice[i] = bid.price;
        snapshot->bidVolume[i] = std::max(1, bid.volume / 2);
        snapshot->askPrice[i] = ask.price;
        snapshot->askVolume[i] = std::max(1, ask.volume / 2);
    }
    return snapshot;
}

// Of the best bids the one whose queue is nearest to 100 orders.
double priceOfMiddlingQueue(const Followed& followed)
{
    const auto nearer = [](const auto& a, const auto& b) {
        return std::abs(a->number - 100) < std::abs(b->number - 100);
    };
    return (*std::min_element(followed.bids.end() - 10, followed.bids.end(), nearer))->price;
}

Body prepareCorrectedQueue()
{
    auto followed = builtModel();
    const double price = priceOfMiddlingQueue(*followed);
    const auto snapshot = boost::make_shared<TC::MetaCacheDataWrapper>(*followed->orders);
    snapshot->records = {thinnerSnapshot(*followed)};
    followed->model.quoterCallback(0, 1, snapshot);
    followed->feed.drain();
    if (followed->model.getQueue(true, price) == followed->model.m_book.getLevel(true, price))
        throw std::logic_error("the snapshot does not correct the queue");
    return {[followed, price](int times) {
        for (int i = 0; i < times; ++i)
            followed->model.getQueue(true, price);
        return times;
    }};
}

// What the caller of clear() waits for; freeing comes later and is not counted.
Body prepareClear()
{
    auto followed = std::make_shared<Followed>(kFullDay);
    return {[followed](int) {
                followed->model.clear();
                return 1;
            },
            [followed] {
                followed->feed.freeReleased();
                followed->build();
                followed->read();
            }};
}

} // namespace

std::vector<Operation> bookModelOperations()
{
    return {
        {"model_history", [] { return prepareModelHistory<Model>(kStream, FirstHistory::Orders); }},
        {"model_history_day", [] { return prepareModelHistory<Model>({}, FirstHistory::Orders); }},
        {"model_history_day_trades_first", [] { return prepareModelHistory<Model>({}, FirstHistory::Trades); }},
        {"model_live", [] { return prepareModelLive<Model>(kStream); }},
        {"check_update_idle", prepareIdleRead},
        {"check_update_after_tick", prepareReadAfterTick, 100},
        {"check_update_same_rows", prepareReadOfSameRows, 500},
        {"get_queue_corrected", prepareCorrectedQueue, 500},
        {"model_clear", prepareClear, 1, 10},
    };
}

} // namespace bench
