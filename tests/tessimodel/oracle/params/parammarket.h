#pragma once

#include "tests/tessimodel/oracle/dice.h"
#include "tests/tessimodel/oracle/params/paramstreams.h"

#include <cstddef>

namespace tests::oracle::params {

// The snapshots of an instrument's day: phases in their order, a volume that mostly rises and starts anew behind the
// close, prices that walk by ticks, and now and then something that no exchange sends.
class ParamMarket {
public:
    explicit ParamMarket(Dice& randomness);

    // A new day of the instrument, which may begin in the middle.
    void open(int instrument);
    bool isOver() const { return m_phase + 1 == kPhases && m_left <= 0; }

    RecordPtr next();
    RecordPtr foreign();

    // Any snapshot of the day, a repeated one with other figures, or one that no model has seen.
    RecordPtr past();

    // The summary of a book now, at a snapshot of the day, or at the one to come.
    AuxPtr aux();

    double anyPrice();
    double oddDouble();
    __int64 oddVolume();

    // The snapshots of the day so far, oldest first.
    const std::vector<RecordPtr>& day() const { return m_day; }

private:
    enum class Style { LevelOne, LevelTwo, Broker, Mixed };
    static constexpr std::size_t kPhases = 9;

    void passTime();
    void enterPhase(std::size_t phase);
    void trade();
    void moveVolume();
    int status();
    double priceFigure(double value);
    double thinPrice();
    RecordPtr make(__int64 timetag, int status);
    template <class Record>
    std::shared_ptr<Record> filled(__int64 timetag, int status);

    Dice& m_dice;
    const standin::InstrumentDescription* m_stock = nullptr;
    Style m_style = Style::LevelOne;
    bool m_wild = false; // doubles that no exchange sends
    bool m_hasSettlements = false;
    std::size_t m_phase = 0;
    int m_left = 0; // snapshots of the phase
    __int64 m_time = 0;
    __int64 m_gap = 0; // to the next snapshot
    __int64 m_volume = 0;
    double m_amount = 0;
    double m_last = 0;
    double m_open = 0;
    double m_high = 0;
    double m_low = 0;
    std::vector<RecordPtr> m_day;
};

} // namespace tests::oracle::params
