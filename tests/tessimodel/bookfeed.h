#pragma once

#include "standin/terminal.h"
#include "tests/support/instruments.h"
#include "tests/support/records.h"

#include <boost/make_shared.hpp>

#include <string>
#include <type_traits>
#include <utility>

// What tests of the book models are written with.
namespace tests {

// The kinds of a delivery.
inline constexpr int history = 0;
inline constexpr int moreHistory = 3;
inline constexpr int live = 1;

// A terminal whose strands are drained by hand. It knows two Shenzhen stocks, 000001 and 000002, with ticks of 0.01
// and 100 shares a hand. What the models' manager holds ends with it.
class BookTerminal : public standin::Terminal {
public:
    BookTerminal();
    ~BookTerminal();
};

// Delivers the streams of an instrument to a book model and has its strand do the work. To be seen at once:
//
//     feed.begin();                                                          // both histories, empty
//     feed.orders(live, {order(1).buy(10.00).shares(300)});
//     feed.trades(live, {fill(1, 2).at(10.00).shares(100)});
//     EXPECT_EQ(bookText(model), "bid 10.00 2h x1 (-1)\n");
//
// With holdBack() the work waits on the strand until run().
template <class Model>
class BookFeed {
public:
    BookFeed(standin::Terminal& terminal, Model& model, std::string market = "SZ", std::string code = "000001")
        : m_terminal(terminal)
        , m_model(model)
        , m_market(std::move(market))
        , m_code(std::move(code))
    {}

    void orders(int kind, Records records) { deliver(&Model::entrustCallback, kind, std::move(records)); }
    void trades(int kind, Records records) { deliver(&Model::transactionCallback, kind, std::move(records)); }
    void snapshots(int kind, Records records) { deliver(&Model::quoterCallback, kind, std::move(records)); }
    void thousand(int kind, Records records) { deliver(&Model::ThousandDataCallback, kind, std::move(records)); }

    void queues(int kind, Records records) { deliver(&Model::queueCallback, kind, std::move(records)); }

    // Both histories, empty unless given: the book is built.
    void begin(Records orderHistory = {}, Records tradeHistory = {})
    {
        orders(history, std::move(orderHistory));
        trades(history, std::move(tradeHistory));
    }

    void holdBack() { m_holdsBack = true; }
    void run()
    {
        m_holdsBack = false;
        m_terminal.strands.drain("modulegroup");
    }

    // The next deliveries are for that instrument.
    void request(const std::string& market, const std::string& code)
    {
        m_market = market;
        m_code = code;
    }

private:
    template <class Owner, class Batch>
    void deliver(void (Owner::*callback)(int, int, const Batch&), int kind, Records records)
    {
        if constexpr (std::is_same_v<Batch, Records>)
            (m_model.*callback)(0, kind, records);
        else
            (m_model.*callback)(0, kind, batchFor(m_market, m_code, std::move(records)));
        if (!m_holdsBack)
            m_terminal.strands.drain("modulegroup");
    }

    standin::Terminal& m_terminal;
    Model& m_model;
    std::string m_market;
    std::string m_code;
    bool m_holdsBack = false;
};

// A model that follows SZ 000001, and its feed.
template <class Model>
struct FollowedModel {
    template <class... Arguments>
    explicit FollowedModel(const Arguments&... arguments)
        : model(arguments...)
    {
        model.setStock(keyOf("SZ", "000001"));
    }

    BookTerminal terminal;
    Model model;
    BookFeed<Model> feed{terminal, model};
};

// Both histories of a day that leaves three orders in the book, one of them partly filled.
struct HistoriesOfADay {
    const Records ordersOfTheDay{
        order(1).buy(10.00).shares(500), order(2).sell(10.02).shares(300), order(3).buy(10.02).shares(100),
        order(4).buy(9.99).shares(200),  order(5).sell(10.03).shares(700),
    };
    const Records tradesOfTheDay{fill(3, 2).at(10.02).shares(100), cancelOfBuy(4).shares(200)};
};

} // namespace tests
