#pragma once

#include "tests/tessimodel/oracle/thousandduel.h"

#include <deque>

namespace tests::oracle {

struct TickModel : TC::CModelDepthThousand {
    using CModelDepthThousand::CModelDepthThousand;
    using CModelDepthThousand::getAsks;
    using CModelDepthThousand::getBids;
};

// Plays a stream on the model and on the naive one side by side.
class Player : public ThousandLevelDuel<Step, TickModel, NaiveModel> {
public:
    Player(standin::Terminal& terminal, const Stream& stream, Counters& counters);

    // Compares everything after every step. Empty when both agree to the end, else what differs first.
    std::string play();

private:
    struct HeldQueue {
        std::shared_ptr<TC::SingleQueue> real;
        NaiveLevelPtr naive;
        TC::SingleQueue::Quotes realQuotes;
        std::map<__int64, std::shared_ptr<NaiveQuote>> naiveQuotes;
        bool realIsBooks;
        bool naiveIsBooks;
    };

    void apply(const Step& step) override;
    void write(Lines& expected, Lines& real) const override;
    void askQueue(bool isBid, double price);
    void writeHeld(Lines& expected, Lines& real) const;

    const Stream& m_stream;
    std::deque<HeldQueue> m_held;
};

} // namespace tests::oracle
