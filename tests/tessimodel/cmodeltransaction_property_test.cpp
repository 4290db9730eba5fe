#include "indexui/tessimodel/cmodeltransaction.h"
#include "quoter/brovanquoteralldata.h"
#include "standin/terminal.h"
#include "tests/support/instruments.h"
#include "tests/support/records.h"
#include "tests/tessimodel/transactionrows.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cfloat>
#include <cmath>
#include <limits>

namespace {

using namespace tests;

// The rules of the list once more, as plainly as they can be written and with none of the library's helpers.
struct NaiveList {
    struct Row {
        int second, total, volume, status;
        double price, bid, ask;
        bool isBuy;
    };

    bool mainland = false;
    bool hasPhase = false;
    bool inPhase = false;
    std::vector<Row> rows;

    static double orPrice(double best, double price)
    {
        return std::fabs(best - DBL_MAX) <= 1e-5 || std::fabs(best) <= 1e-5 ? price : best;
    }

    bool take(const quoter::QuoterBase* base, const double* bids, const double* asks, long long volume, int status)
    {
        if (volume == 0)
            return false;
        if (mainland && ((inPhase && status == 15) || (!hasPhase && status >= 22)))
            return false;
        const int total = static_cast<int>(static_cast<unsigned long long>(volume));
        Row row{static_cast<int>(base->timetag / 1000),
                total,
                total,
                status,
                base->lastPrice,
                orPrice(bids[0], base->lastPrice),
                orPrice(asks[0], base->lastPrice),
                true};
        if (!rows.empty()) {
            const Row& last = rows.back();
            if (hasPhase && last.status < 22 && status >= 22 && !inPhase)
                inPhase = true;
            else if (total <= last.total)
                return true;
            else
                row.volume = static_cast<int>(static_cast<long long>(total) - last.total);
            const double moved = row.price - last.price;
            if (std::fabs(moved) <= 1e-5)
                row.isBuy = row.price - row.bid > 1e-5;
            else if (moved < -1e-5)
                row.isBuy = false;
        }
        rows.push_back(row);
        return true;
    }

    bool takeRecord(const quoter::QuoterBasePtr& record)
    {
        if (const auto* a = dynamic_cast<const quoter::QuoterAllData*>(record.get()))
            return take(a, a->bidPrice, a->askPrice, a->volume, a->tradeStatus);
        if (const auto* d = dynamic_cast<const quoter::QuoterDepthData*>(record.get()))
            return take(d, d->bidPrice, d->askPrice, d->volume, d->tradeStatus);
        return false;
    }

    bool batch(int kind, const Records& records, bool& updated)
    {
        if (kind == 0) {
            rows.clear();
            inPhase = false;
        }
        if (records.empty())
            return true;
        if (kind != 0 && kind != 3) {
            const bool counted = takeRecord(records.back());
            updated = updated || counted;
            return counted;
        }
        for (const auto& record : records)
            takeRecord(record);
        updated = true;
        return true;
    }
};

quoter::QuoterBasePtr anyRecord()
{
    const auto price = [] {
        return *rc::gen::element(0.0, 10.0, 10.01, 10.00001, 9.99, 1e-5, 2e-5, DBL_MAX, -1.0, 1e300,
                                 std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity());
    };
    const auto volume = *rc::gen::oneOf(rc::gen::inRange<long long>(-3, 60),
                                        rc::gen::element<long long>(2147483647LL, 2147483648LL, 4294967296LL,
                                                                    std::numeric_limits<long long>::min(),
                                                                    std::numeric_limits<long long>::max()));
    const int status = *rc::gen::element(0, 10, 13, 15, 18, 21, 22, 23, 24);
    const auto fill = [&](auto snapshot) {
        snapshot.last(price()).volume(volume).bid(price()).ask(price()).status(status);
        return quoter::QuoterBasePtr(snapshot);
    };
    switch (*rc::gen::inRange(0, 9)) {
    case 0:
        return nullptr;
    case 1:
        return order(1).buy(10);
    case 8:
        return fill(Snapshot<zolv::BrovanQuoterAllData>("10:00:06"));
    case 2:
    case 3:
    case 4:
        return fill(level2("10:00:00"));
    default:
        return fill(level1("10:00:03"));
    }
}

bool sameNumber(double a, double b)
{
    return (std::isnan(a) && std::isnan(b)) || a == b;
}

void compare(const Transactions& model, const NaiveList& naive)
{
    RC_ASSERT(static_cast<std::size_t>(model.m_datas.size()) == naive.rows.size());
    RC_ASSERT(model.m_inAfterHours == naive.inPhase);
    for (int i = 0; i < model.m_datas.size(); ++i) {
        const TC::TransData& row = model.m_datas.at(i);
        const NaiveList::Row& expected = naive.rows[static_cast<std::size_t>(i)];
        RC_ASSERT(row.timetag == expected.second);
        RC_ASSERT(row.totalVolume == expected.total);
        RC_ASSERT(row.volume == expected.volume);
        RC_ASSERT(row.tradeStatus == expected.status);
        RC_ASSERT(row.isBuy == expected.isBuy);
        RC_ASSERT(sameNumber(row.price, expected.price));
        RC_ASSERT(sameNumber(row.bidPrice, expected.bid));
        RC_ASSERT(sameNumber(row.askPrice, expected.ask));
    }
}

TEST(TransactionProperty, shouldEqualTheNaiveListWhenFedWithAnything)
{
    standin::Terminal terminal;
    terminal.instruments.add(stock("SH", "600000"));
    terminal.instruments.add(stock("SH", "688001", {277}));
    terminal.instruments.add(stock("SZ", "300001", {10006}));
    terminal.instruments.add(stock("HK", "00700"));
    terminal.instruments.add(stock("HK", "00701", {277}));
    struct Instrument {
        const char *market, *code;
        bool mainland, hasPhase;
    };
    const Instrument instruments[] = {{"SH", "600000", true, false},
                                      {"SH", "688001", true, true},
                                      {"SZ", "300001", true, true},
                                      {"HK", "00700", false, false},
                                      {"HK", "00701", false, true}};

    const bool holds = rc::check("rows, flags and answers", [&] {
        const Instrument instrument = instruments[*rc::gen::inRange(0, 5)];
        Transactions model;
        model.setStock(keyOf(instrument.market, instrument.code));
        NaiveList naive;
        naive.mainland = instrument.mainland;
        naive.hasPhase = instrument.hasPhase;

        bool updated = false;
        const int batches = *rc::gen::inRange(1, 12);
        for (int b = 0; b < batches; ++b) {
            const int kind = *rc::gen::element(0, 3, 3, 1, 1, 1, 2, -1, 7);
            Records records(static_cast<std::size_t>(*rc::gen::inRange(0, 6)));
            for (auto& record : records)
                record = anyRecord();
            if (*rc::gen::inRange(0, 10) == 0) {
                model.clear();
                naive.rows.clear();
                updated = true;
            }
            RC_ASSERT(model.quoterCallBack(0, kind, records) == naive.batch(kind, records, updated));
            RC_ASSERT(model.m_updated == updated);
            compare(model, naive);
        }
    });
    EXPECT_TRUE(holds);
}

} // namespace
