#pragma once

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

// A tick-built book by itself, of SZ 000001: ticks of 0.01, 100 shares a hand.
class TickBookTest : public ::testing::Test {
protected:
    TickBookTest()
        : stock(terminal.instruments.add(tests::stock("SZ", "000001")))
    {
        book.m_stock = stock;
        book.m_priceTick = 0.01;
        book.m_volumeUnit = 100;
    }

    // Offers a live tick. True when the book took it; `flags` then tells what it changed.
    bool offer(const Order& order)
    {
        flags = 0;
        return book.appendOrder(stock, order, flags, true);
    }
    bool offer(const Trade& trade)
    {
        flags = 0;
        return book.appendTransaction(stock, trade, flags, true);
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
    std::string answer(const Tick& tick)
    {
        const bool taken = offer(tick);
        return std::string(taken ? "taken" : "refused") + ", flags " + std::to_string(flags);
    }

    // The trades that wait, "5: 100 40\n": the order's seq and their shares.
    static std::string pendingText(const TC::ThousandBook::Pending& pending)
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

    BookTerminal terminal;
    std::shared_ptr<ztservice::CInstrumentDetail> stock;
    TC::ThousandBook book;
    int flags = 0;
};

} // namespace tests
