// The model that has its rows from thousand-level snapshots against one that is too plain to be wrong, fed with the
// same streams, and compared in full after every step.

#include "quoter/levelthousanddata.h"
#include "quoter/orderdata.h"
#include "quoter/quoterdepthdata.h"
#include "quoter/transactiondata.h"
#include "tests/tessimodel/oracle/thousand/naivequoterthousand.h"
#include "tests/tessimodel/oracle/thousand/thousandgenerator.h"
#include "tests/tessimodel/oracle/thousandduel.h"

#include <boost/make_shared.hpp>

namespace {

using namespace tests::oracle;
using namespace tests::oracle::thousand;

constexpr int kStreams = 300;

const Section kThousand{"thousand-level records",
                        nullptr,
                        {"m_thousand #", "m_prevThousand #", "m_reserved", "compareNewerQuote", "m_modelId"}};
const Section kOwn{"own", nullptr, {"m_orders", "m_transactions", "m_dealVolumes"}};
const Section kPriceDelta{"m_priceDeltas", "price", {"delta", "timetag"}};

struct Model : TC::CModelQuoterDepthThousand {
    using CModelQuoterDepthThousand::CModelQuoterDepthThousand;
    using CModelQuoterDepthThousand::getAsks;
    using CModelQuoterDepthThousand::getAsksByQuoter;
    using CModelQuoterDepthThousand::getBids;
    using CModelQuoterDepthThousand::getBidsByQuoter;
};

int idOf(const RecordPtr& record)
{
    return record ? record->id : -1;
}

class ThousandDuel : public ThousandLevelDuel<ThousandStep, Model, NaiveQuoterThousand> {
public:
    ThousandDuel(standin::Terminal& terminal, bool suppresses)
        : ThousandLevelDuel(terminal)
    {
        m_real.emplace(suppresses, 7);
        m_naive.emplace(suppresses, m_naiveManager, m_shared, m_counted);
    }

private:
    void apply(const ThousandStep& step) override
    {
        using enum ThousandStep::Action;
        switch (step.action) {
        case Thousand:
            deliver(step, &Model::ThousandDataCallback, m_records.of(step.batch));
            break;
        case Snapshots:
            deliver(step, &Model::quoterCallback, m_records.of(step.batch));
            break;
        case Read:
            if (step.flag)
                startExtremesAnew();
            m_realEarlier = m_realPanel;
            m_naiveEarlier = m_naivePanel;
            read(step.byQuoter);
            break;
        case ReadSide:
            readRows(step);
            break;
        case Queue:
            m_realQueue = m_real->getQueue(step.flag, step.price, step.volumes);
            m_naiveQueue = m_naive->getQueue(step.flag, step.price, step.volumes);
            break;
        case Reserve:
            m_real->m_reserved = m_naive->reserved = m_naive->reservedTime(step);
            break;
        case Own:
            fill(step);
            break;
        case Save:
            save(step.instrument);
            break;
        case Forget:
            forgetSavedRows();
            break;
        default:
            applyCommon(step);
            if (step.action == Clear)
                m_ownTicks = 0;
            break;
        }
    }

    void readRows(const ThousandStep& step)
    {
        const auto getRows = step.flag       ? step.byQuoter ? &Model::getBidsByQuoter : &Model::getBids
                             : step.byQuoter ? &Model::getAsksByQuoter
                                             : &Model::getAsks;
        readSide(step.flag, getRows);
        m_naive->getSide(step.flag, step.byQuoter, m_naivePanel);
    }

    // What the sibling class has and this one leaves empty.
    void fill(const ThousandStep& step)
    {
        const NaiveRow row{step.price, 5, -1, 2};
        m_naive->askRows[7] = std::make_shared<NaiveRow>(row);
        m_real->m_askRows[7] = realRow(row);
        if (step.flag) {
            m_naive->bidRows[-7] = m_naive->askRows[7];
            m_real->m_bidRows[-7] = m_real->m_askRows[7];
        }
        m_real->m_loadedHistory = m_real->m_dataReady = 3;
        m_naive->loadedHistory = m_naive->dataReady = 3;
        m_real->m_tickLastPrice = m_naive->tickLastPrice = 10.0;
        m_real->m_tickLastVolume = m_naive->tickLastVolume = 5;
        m_real->m_book.m_lastTimetag = m_naive->book.lastTimetag = step.flag ? m_naive->quoterTimetag : 0;
        m_real->m_book.m_bidsDirty = m_naive->book.bids.dirty = false;
        m_real->m_book.m_asksDirty = m_naive->book.asks.dirty = false;
        m_real->m_orders.push_back(std::make_shared<quoter::OrderData>());
        m_real->m_transactions.push_back(std::make_shared<quoter::TransactionData>());
        m_real->m_dealVolumes[++m_ownTicks] = 5;
    }

    static boost::shared_ptr<TC::EntrustData> realRow(const NaiveRow& row)
    {
        auto real = boost::make_shared<TC::EntrustData>();
        real->price = row.price;
        real->volume = row.volume;
        real->delta = row.delta;
        real->number = row.number;
        return real;
    }

    void save(int instrument)
    {
        const NaiveRow row{9.9, 3, 0, 1};
        const auto naive = std::make_shared<NaiveRow>(row);
        const auto real = realRow(row);
        m_naiveManager.saved[instrument] = {{{990, naive}}, {}};
        m_realManager->setData(stockKeyOf(instrument).toStdString(), {{990, real}}, {});
    }

    void write(Lines& expected, Lines& real) const override
    {
        writeSurroundings(expected, real);
        if (m_real) {
            writeNaive(expected);
            writeReal(real);
        }
        writeState(expected, m_naiveEarlier);
        writeState(real, m_realEarlier);
        if (m_naiveQueue)
            writeState(expected, *m_naiveQueue, m_naiveQueue->isBid, 0);
        if (m_realQueue)
            writeState(real, *m_realQueue, m_realQueue->m_isBid, 0);
    }

    void writeNaive(Lines& out) const
    {
        writeSharedState(out, *m_naive);
        out.add(kThousand, {idOf(m_naive->thousand), idOf(m_naive->prevThousand), m_naive->reserved,
                            m_naive->compareNewerQuote(), 7});
        out.add(kOwn, {m_ownTicks, m_ownTicks, m_ownTicks});
        for (const auto& [price, delta] : m_naive->priceDeltas)
            out.add(kPriceDelta, price, {delta.first, delta.second});
    }

    void writeReal(Lines& out) const
    {
        writeSharedState<TC::CModelQuoterDepthThousand>(out, *m_real, m_records);
        out.add(kThousand, {m_records.idOf(m_real->m_thousand.get()), m_records.idOf(m_real->m_prevThousand.get()),
                            m_real->m_reserved, m_real->compareNewerQuote(), m_real->m_modelId});
        out.add(kOwn,
                {static_cast<__int64>(m_real->m_orders.size()), static_cast<__int64>(m_real->m_transactions.size()),
                 static_cast<__int64>(m_real->m_dealVolumes.size())});
        for (auto delta = m_real->m_priceDeltas.cbegin(); delta != m_real->m_priceDeltas.cend(); ++delta)
            out.add(kPriceDelta, delta.key(), {delta->first, delta->second});
    }

    Counters m_shared;
    ThousandCounters m_counted;
    int m_ownTicks = 0;
    RealPanel m_realEarlier;
    NaivePanel m_naiveEarlier;
    std::shared_ptr<TC::SingleQueue> m_realQueue;
    NaiveLevelPtr m_naiveQueue;
};

TEST(QuoterThousandOracle, shouldEqualTheNaiveModelWhenStreamsAreAnything)
{
    standin::Terminal terminal;
    prepare(terminal);
    checkDuels("rows, deltas, figures and all that is kept", kStreams, &makeThousandSteps,
               [&terminal] { return ThousandDuel(terminal, *rc::gen::inRange(0, 6) == 0); });
}

} // namespace
