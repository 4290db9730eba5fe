#pragma once

#include "indexui/tessimodel/cmodeldepthqueue_book.h"
#include "indexui/tessimodel/cmodeldepththousand_book.h"
#include "quoter/orderdata.h"
#include "quoter/transactiondata.h"
#include "standin/terminal.h"
#include "tests/support/instruments.h"
#include "tests/tessimodel/bookfeed.h"
#include "tests/tessimodel/booktext.h"

#include <gtest/gtest.h>

#include <string>

namespace tests {

// How each book takes a live tick.
inline bool takeTick(TC::ThousandBook& book, const TC::ThousandBook::Stock& stock, const Order& order, int& flags)
{
    return book.appendOrder(stock, order, flags, true);
}
inline bool takeTick(TC::ThousandBook& book, const TC::ThousandBook::Stock& stock, const Trade& trade, int& flags)
{
    return book.appendTransaction(stock, trade, flags, true);
}
inline bool takeTick(TC::QueueBook& book, const TC::QueueBook::Stock& stock, const Order& order, int& flags)
{
    return book.appendOrder(stock, order, flags);
}
inline bool takeTick(TC::QueueBook& book, const TC::QueueBook::Stock& stock, const Trade& trade, int& flags)
{
    return book.appendTransaction(stock, trade, flags);
}

// A tick-built book by itself, of SZ 000001: ticks of 0.01, 100 shares a hand. A test has it as a base or, when it is
// about several kinds of book, as an object.
template <class Book>
struct BookStory {
    BookStory()
        : stock(terminal.instruments.add(tests::stock("SZ", "000001")))
    {
        book.m_stock = stock;
        book.m_priceTick = 0.01;
        book.m_volumeUnit = 100;
    }

    // Offers a live tick while some flags stand. True when the book took it; `flags` then tells what it changed.
    template <class Tick>
    bool offer(const Tick& tick, int standing = 0)
    {
        flags = standing;
        return takeTick(book, stock, tick, flags);
    }

    // Ticks that a story begins with, all of them taken.
    template <class... Ticks>
    void given(const Ticks&... ticks)
    {
        for (const bool taken : {offer(ticks)...})
            EXPECT_TRUE(taken) << "a tick that the story begins with";
    }

    // "taken, flags 2" or "refused, flags 0".
    template <class Tick>
    std::string answer(const Tick& tick, int standing = 0)
    {
        const bool taken = offer(tick, standing);
        return std::string(taken ? "taken" : "refused") + ", flags " + std::to_string(flags);
    }

    std::string levels() const { return levelsText(book); }

    // The trades that wait, "5: 100 40\n": the order's seq and their shares.
    static std::string pendingText(const typename Book::Pending& pending)
    {
        std::string text;
        for (const auto& [seq, trades] : pending) {
            text += std::to_string(seq) + ":";
            for (const auto& trade : trades)
                text += " " + std::to_string(trade->volume);
            text += "\n";
        }
        return text;
    }

    std::string waitingToBuy() const { return pendingText(book.m_pendingBuy); }
    std::string waitingToSell() const { return pendingText(book.m_pendingSell); }

    BookTerminal terminal;
    std::shared_ptr<ztservice::CInstrumentDetail> stock;
    Book book;
    int flags = 0;
};

class ThousandBookTest : public ::testing::Test, protected BookStory<TC::ThousandBook> {};

// --- tests about both kinds of book ---------------------------------------------------------------------------

using BothBooks = ::testing::Types<TC::ThousandBook, TC::QueueBook>;

struct BookNames {
    template <class Book>
    static std::string GetName(int)
    {
        return std::is_same_v<Book, TC::QueueBook> ? "QueueBook" : "ThousandBook";
    }
};

} // namespace tests
