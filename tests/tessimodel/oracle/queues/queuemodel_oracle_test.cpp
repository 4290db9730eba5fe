// The model of the order queues against one that is too plain to be wrong, fed with the same streams, and compared in
// full after every step.

#include "tests/tessimodel/oracle/modelduel.h"
#include "tests/tessimodel/oracle/queues/queuegenerator.h"
#include "tests/tessimodel/oracle/queues/queuestate.h"

#include <deque>

namespace {

using namespace tests::oracle;
using namespace tests::oracle::queues;

constexpr int kStreams = 300;
constexpr int kHeldByPanel = 10;
constexpr std::size_t kLevelsHeld = 3;

struct Model : TC::CModelDepthQueue {
    using CModelDepthQueue::CModelDepthQueue;
    using CModelDepthQueue::getAsks;
    using CModelDepthQueue::getBids;
};

class QueueDuel : public ModelDuel<ModelStep, Model, NaiveQueueModel> {
public:
    QueueDuel(standin::Terminal& terminal, bool suppresses)
        : ModelDuel(terminal)
    {
        m_real.emplace(suppresses, 7);
        m_naive.emplace(suppresses, m_counters);
    }

private:
    struct Held {
        std::shared_ptr<TC::OrderQueue> real;
        NaiveOrderQueuePtr naive;
        TC::OrderQueue::Quotes realQuotes;
        std::map<__int64, std::shared_ptr<NaiveQuote>> naiveQuotes;
    };

    void apply(const ModelStep& step) override
    {
        using enum ModelStep::Action;
        switch (step.action) {
        case Orders:
            deliver(step, &Model::entrustCallback, recordsOf(step));
            break;
        case Trades:
            deliver(step, &Model::transactionCallback, recordsOf(step));
            break;
        case Queues:
            deliver(step, &Model::queueCallback, recordsOf(step));
            break;
        case Snapshots:
            deliver(step, &Model::quoterCallback, recordsOf(step));
            break;
        case Read:
        case ReadBids:
            read(step);
            break;
        case Level:
            hold(step);
            break;
        case Clean:
            m_real->m_book.m_bidsDirty = m_real->m_book.m_asksDirty = false;
            m_naive->book.bids.dirty = m_naive->book.asks.dirty = false;
            break;
        case BookOf:
            m_real->m_book.m_stock = detailOf(step.instrument);
            m_naive->book.stock = step.instrument;
            break;
        case NewTick:
            m_real->m_priceTick = m_real->m_book.m_priceTick = step.price;
            m_naive->priceTick = m_naive->book.priceTick = step.price;
            break;
        default:
            applyCommon(step);
            break;
        }
    }

    std::vector<std::shared_ptr<quoter::QuoterBase>> recordsOf(const ModelStep& step)
    {
        return m_records.of(step.batch->records);
    }

    void read(const ModelStep& step)
    {
        if (step.flag) {
            m_realBids = {std::make_shared<TC::OrderQueue>(9.0, true), nullptr};
            m_realAsks = {m_realBids[0], std::make_shared<TC::OrderQueue>(9.5, false)};
            m_naiveBids = {queueAt(9.0, true), nullptr};
            m_naiveAsks = {m_naiveBids[0], queueAt(9.5, false)};
        }
        if (step.action == ModelStep::Action::Read) {
            m_realAnswer = m_real->checkUpdate(m_realFlags, m_realBids, m_realAsks);
            m_naiveAnswer = m_naive->checkUpdate(m_naiveFlags, m_naiveBids);
        } else {
            m_real->getBids(m_realBids);
            m_real->getAsks(m_realAsks);
            m_naive->getBids(m_naiveBids);
        }
    }

    static NaiveOrderQueuePtr queueAt(double price, bool isBid)
    {
        auto queue = std::make_shared<NaiveOrderQueue>();
        queue->price = price;
        queue->isBid = isBid;
        return queue;
    }

    // A level that a panel holds lives on when the book has dropped it, and so do its orders.
    void hold(const ModelStep& step)
    {
        Held& held = m_held.emplace_back();
        held.real = m_real->m_book.getLevel(step.flag, step.price);
        held.naive = m_naive->book.getLevel(step.flag, step.price);
        if (held.real)
            held.realQuotes = held.real->m_quotes;
        if (held.naive)
            held.naiveQuotes = held.naive->quotes;
        if (m_held.size() > kLevelsHeld)
            m_held.pop_front();
    }

    void write(Lines& expected, Lines& real) const override
    {
        expected.add(m_answer, {m_naiveAnswer, m_naiveFlags, static_cast<__int64>(m_naiveBids.size())});
        real.add(m_answer, {m_realAnswer, m_realFlags, static_cast<__int64>(m_realBids.size())});
        if (m_real) {
            writeState(expected, *m_naive);
            writeState(real, *m_real, m_records);
        }
        for (const Held& held : m_held) {
            writeState(expected, held.naive.get(), {kHeldByPanel, 0});
            writeState(real, held.real.get(), {kHeldByPanel, 0});
            writeQuotes(expected, held.naiveQuotes);
            writeQuotes(real, held.realQuotes);
        }
        writeLists(expected, m_naiveBids, m_naiveAsks);
        writeLists(real, m_realBids, m_realAsks);
    }

    template <class List>
    static void writeLists(Lines& out, const List& bids, const List& asks)
    {
        for (const auto& row : bids)
            writeState(out, row.get(), {kHeldByPanel, 1});
        for (const auto& row : asks)
            writeState(out, row.get(), {kHeldByPanel, 2});
    }

    const Section m_answer{"answer", nullptr, {"answer", "flags", "bids"}};
    Counters m_counters;
    int m_realFlags = 0;
    int m_naiveFlags = 0;
    TC::OrderQueueList m_realBids;
    TC::OrderQueueList m_realAsks;
    NaiveQueueModel::List m_naiveBids;
    NaiveQueueModel::List m_naiveAsks;
    std::deque<Held> m_held;
};

TEST(QueueModelOracle, shouldEqualTheNaiveModelWhenStreamsAreAnything)
{
    standin::Terminal terminal;
    prepare(terminal);
    checkDuels("levels, orders, rows in their slots and all that is kept", kStreams, &makeModelSteps,
               [&terminal] { return QueueDuel(terminal, *rc::gen::inRange(0, 6) == 0); });
}

} // namespace
