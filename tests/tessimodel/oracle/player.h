#pragma once

#include "tests/tessimodel/oracle/naivestate.h"
#include "tests/tessimodel/oracle/realstate.h"

#include <deque>
#include <optional>

namespace tests::oracle {

// Plays a stream on the model and on the naive one side by side.
class Player {
public:
    Player(standin::Terminal& terminal, const Stream& stream, Counters& counters);

    // Compares everything after every step. Empty when both agree to the end, else what differs first.
    std::string play();

private:
    struct Model : TC::CModelDepthThousand {
        using CModelDepthThousand::CModelDepthThousand;
        using CModelDepthThousand::getAsks;
        using CModelDepthThousand::getBids;
    };

    struct HeldQueue {
        std::shared_ptr<TC::SingleQueue> real;
        NaiveLevelPtr naive;
        TC::SingleQueue::Quotes realQuotes;
        std::map<__int64, std::shared_ptr<NaiveQuote>> naiveQuotes;
        bool realIsBooks;
        bool naiveIsBooks;
    };

    void apply(const Step& step);
    void deliver(const Step& step);
    void work();
    void read(bool startsAnew);
    void readSide(bool isBid);
    void askQueue(bool isBid, double price);
    void writeAll(Lines& expected, Lines& real);
    void writeHeld(Lines& expected, Lines& real) const;
    std::string difference(const std::string& after);
    std::string endOfModel();

    standin::Terminal& m_terminal;
    const Stream& m_stream;
    RealRecords m_records;
    boost::shared_ptr<TC::CDepthThousandModelManager> m_realManager;
    std::optional<Model> m_real;
    RealPanel m_realPanel;
    bool m_realAnswer = false;
    NaiveManager m_naiveManager;
    std::optional<NaiveModel> m_naive;
    NaivePanel m_naivePanel;
    bool m_naiveAnswer = false;
    std::deque<HeldQueue> m_held;
    Lines m_expectedLines;
    Lines m_realLines;
};

} // namespace tests::oracle
