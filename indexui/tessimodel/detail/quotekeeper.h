#pragma once

#include "indexui/tessimodel/detail/livewrite.h"
#include "indexui/tessimodel/detail/orderplace.h"

#include <memory>
#include <utility>
#include <vector>

// How orders get into a level's queue and out of it.
namespace TC::detail {

using Quotes = SingleQueue::Quotes;

inline void writeQuote(SingleQuote& quote, const SingleQuote& value)
{
    writeLive(quote.timetag, value.timetag);
    writeLive(quote.seq, value.seq);
    writeLive(quote.volume, value.volume);
    writeLive(quote.dealVolume, value.dealVolume);
    writeLive(quote.status, value.status);
}

// For a level by itself.
struct PlainKeeper {
    // Returns the order of that seq, which may have been here before; then nothing changes. Quickest behind the last.
    [[gnu::noinline]] static Quotes::iterator insert(Quotes& quotes, __int64 timetag, __int64 seq, __int64 volume)
    {
        return quotes.emplace_hint(quotes.end(), seq, std::make_shared<SingleQuote>(SingleQuote{timetag, seq, volume}));
    }

    static Quotes::iterator find(Quotes& quotes, __int64 seq) { return quotes.find(seq); }
    static void erase(Quotes& quotes, Quotes::iterator quote) { quotes.erase(quote); }
};

// Where the orders of a book are, and the orders that have gone, map node and all, which are kept for the next ones: a
// busy book adds and drops an order with nearly every tick. Never keeps more than rested at once.
struct QuoteStore {
    OrderPlaces& places;
    std::vector<Quotes::node_type> spare;
};

// For the levels of a book: follows where the orders are, and takes their memory again and again. Made for one tick;
// `own` is the place of the order that the tick is of.
struct BookKeeper {
    QuoteStore& store;
    OrderPlace& own;
    bool isBid; // the side of the level

    Quotes::iterator insert(Quotes& quotes, __int64 timetag, __int64 seq, __int64 volume) const
    {
        own.isBid = isBid;
        own.rests = true;
        own.quote = store.spare.empty() ? PlainKeeper::insert(quotes, timetag, seq, volume)
                                        : refill(quotes, timetag, seq, volume);
        return own.quote;
    }

    Quotes::iterator find(Quotes& quotes, __int64 seq) const
    {
        return isOwn() ? own.quote : PlainKeeper::find(quotes, seq);
    }

    // The caller holds the level's lock, or nobody else knows the level: once the order is out of the queue, no panel
    // can get hold of it.
    void erase(Quotes& quotes, Quotes::iterator quote) const
    {
        if (isOwn() && &*own.quote == &*quote)
            own.rests = false;
        else
            forget(quote);
        Quotes::node_type node = quotes.extract(quote);
        if (node.mapped().use_count() == 1)
            store.spare.push_back(std::move(node));
    }

    // Of an order that a tick of another one took along: it has no place any more.
    [[gnu::noinline]] void forget(Quotes::iterator quote) const
    {
        const auto place = store.places.find(quote->first);
        // Another order may have come with the same seq since; then the place is that one's.
        if (place != store.places.end() && place->second.rests && &*place->second.quote == &*quote)
            place->second.rests = false;
    }

private:
    bool isOwn() const { return own.rests && own.isBid == isBid; }

    Quotes::iterator refill(Quotes& quotes, __int64 timetag, __int64 seq, __int64 volume) const
    {
        Quotes::node_type& node = store.spare.back();
        writeQuote(*node.mapped(), {timetag, seq, volume});
        node.key() = seq;
        const auto inserted = quotes.insert(quotes.end(), std::move(node));
        if (node.empty()) // NOLINT(bugprone-use-after-move): it keeps an order whose seq was here before
            store.spare.pop_back();
        return inserted;
    }
};

} // namespace TC::detail
