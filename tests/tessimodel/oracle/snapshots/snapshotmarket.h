#pragma once

#include "standin/instrumentdescription.h"
#include "tests/tessimodel/oracle/dice.h"
#include "utils/int64.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace quoter {
struct QuoterBase;
}

namespace tests::oracle::snapshots {

using RecordPtr = std::shared_ptr<quoter::QuoterBase>;
using Records = std::vector<RecordPtr>;

// The snapshots of an instrument's day: phases in their order, a volume that mostly rises and starts anew behind the
// close, prices that walk by ticks and parts of them, and now and then something that no exchange sends.
class SnapshotMarket {
public:
    explicit SnapshotMarket(Dice& randomness);

    // A new day of the instrument, which may begin in the middle.
    void open(const standin::InstrumentDescription& stock);
    bool isOver() const;

    RecordPtr next();
    RecordPtr foreign(); // null, or no snapshot
    RecordPtr past();    // any snapshot of the day

    // The end of the day so far, spoiled now and then: its order, and what stands in it.
    Records history(int longest);

    double price();     // about the last price
    double oddDouble(); // of no market
    __int64 volume();   // about the day's volume
    __int64 oddVolume();
    int status();

    const Records& day() const { return m_day; }

private:
    enum class Style { LevelOne, LevelTwo, Broker, Mixed };

    void passPhase();
    void moveVolume();
    void trade();
    double figure(double value);
    double lastPrice();
    double lastClose();
    RecordPtr make();
    template <class Record>
    RecordPtr filled();
    template <std::size_t Depth>
    void fillSide(double (&prices)[Depth], __int64 (&volumes)[Depth], double best, double step);

    Dice& m_dice;
    Style m_style = Style::LevelOne;
    bool m_wild = false;
    double m_tick = 0.01;
    double m_close = 10;
    double m_last = 10;
    std::size_t m_phase = 0;
    int m_left = 0;
    __int64 m_time = 0;
    __int64 m_volume = 0;
    Records m_day;
};

std::string textOf(const RecordPtr& record);
std::string textOf(const Records& records); // each on a line of its own

} // namespace tests::oracle::snapshots
