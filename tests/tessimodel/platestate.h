#pragma once

#include "tests/tessimodel/watchplate.h"

#include <QString>

#include <vector>

namespace tests {

// What a block of the table shows, from the huge orders to the small ones.
struct PlateBlock {
    QString sum;
    QString volumes[4];
    QString ratios[4];
};

// A sector of the pie; the next one begins where it ends.
struct PlateSector {
    int line;       // of its colour
    double degrees; // counter-clockwise
};

// A state of the day and what is to be seen of it.
struct PlateState {
    Counts counts;
    bool traded; // any volume other than 0
    std::vector<PlateSector> sectors;
    PlateBlock buys, sells;
};

inline Counts ordinaryCounts()
{
    return counts().buys(300, 150, 100, 50).sells(100, 50, 150, 100).orders(30, 16);
}

inline PlateState ordinaryState()
{
    return {ordinaryCounts(),
            true,
            {{4, 36}, {5, 18}, {6, 54}, {7, 36}, {3, 18}, {2, 36}, {1, 54}, {0, 108}},
            {"共30单 20.0手/单", {"300", "150", "100", "50"}, {"30.0%", "15.0%", "10.0%", "5.0%"}},
            {"共16单 25.0手/单", {"100", "50", "150", "100"}, {"10.0%", "5.0%", "15.0%", "10.0%"}}};
}

// A block of a state in which its side has none of the volume.
inline PlateBlock zeroBlock()
{
    return {"共0单 0.0手/单", {"0", "0", "0", "0"}, {"0.0%", "0.0%", "0.0%", "0.0%"}};
}

// Buy orders alone, all huge: one sector.
inline PlateState oneSectorState()
{
    return {counts().buys(500, 0, 0, 0).orders(3, 0),
            true,
            {{0, 360}},
            {"共3单 166.7手/单", {"500", "0", "0", "0"}, {"100.0%", "0.0%", "0.0%", "0.0%"}},
            zeroBlock()};
}

// A state without volume: shares are no numbers.
inline PlateState noVolumeState()
{
    const QString invalid = QStringLiteral("非法值");
    const PlateBlock nothing = {"共0单 0.0手/单", {"0", "0", "0", "0"}, {invalid, invalid, invalid, invalid}};
    return {counts(), false, {}, nothing, nothing};
}

// A range whose first record has the larger volume: the sector of the huge sells runs backwards from the top, and the
// small buys begin where it ends and go all round, over it.
inline PlateState negativeState()
{
    return {counts().buys(0, 0, 0, 500).sells(-100, 0, 0, 0).orders(-2, 4),
            true,
            {{4, -90}, {3, 450}},
            {"共-2单 -250.0手/单", {"0", "0", "0", "500"}, {"0.0%", "0.0%", "0.0%", "125.0%"}},
            {"共4单 -25.0手/单", {"-100", "0", "0", "0"}, {"-25.0%", "0.0%", "0.0%", "0.0%"}}};
}

// The pie has room, and nothing to show in it.
inline PlateState cancelledOutState()
{
    const QString invalid = QStringLiteral("非法值");
    return {counts().buys(5, 0, 0, 0).sells(-5, 0, 0, 0).orders(1, 0),
            true,
            {},
            {"共1单 5.0手/单", {"5", "0", "0", "0"}, {invalid, invalid, invalid, invalid}},
            {"共0单 0.0手/单", {"-5", "0", "0", "0"}, {invalid, invalid, invalid, invalid}}};
}

// One in two million is left out, three are drawn.
inline PlateState tinySharesState()
{
    return {counts().buys(0, 0, 0, 1999996).sells(1, 3, 0, 0),
            true,
            {{5, 0.00054}, {3, 359.9993}},
            {"共0单 0.0手/单", {"0", "0", "0", "1999996"}, {"0.0%", "0.0%", "0.0%", "100.0%"}},
            {"共0单 0.0手/单", {"1", "3", "0", "0"}, {"0.0%", "0.0%", "0.0%", "0.0%"}}};
}

inline PlateState thirdsState()
{
    return {counts().buys(1, 0, 0, 1).sells(1, 0, 0, 0).orders(3, 2),
            true,
            {{4, 120}, {3, 120}, {0, 120}},
            {"共3单 0.7手/单", {"1", "0", "0", "1"}, {"33.3%", "0.0%", "0.0%", "33.3%"}},
            {"共2单 0.5手/单", {"1", "0", "0", "0"}, {"33.3%", "0.0%", "0.0%", "0.0%"}}};
}

// All that there is was taken back: it is the whole of the pie.
inline PlateState takenBackState()
{
    return {counts().sells(-100, 0, 0, 0).orders(0, 2),
            true,
            {{4, 360}},
            zeroBlock(),
            {"共2单 -50.0手/单", {"-100", "0", "0", "0"}, {"100.0%", "0.0%", "0.0%", "0.0%"}}};
}

// One bought and one sold of a thousand million each, but for one hand: sectors of very many turns, the second of them
// back from where the first one ends, which is the top.
inline PlateState nearlyCancelledOutState()
{
    return {counts().buys(0, 0, 0, -999999999).sells(1000000000, 0, 0, 0),
            true,
            {{4, 360e9}, {3, -360e9}},
            {"共0单 0.0手/单", {"0", "0", "0", "-999999999"}, {"0.0%", "0.0%", "0.0%", "-100000000000.0%"}},
            {"共0单 0.0手/单", {"1000000000", "0", "0", "0"}, {"100000000000.0%", "0.0%", "0.0%", "0.0%"}}};
}

// The hands of a side do not fit 32 bits: 8589934588, which the nearest float shows 4 higher.
inline PlateState sideAboveTheRangeOfAVolumeState()
{
    const __int64 most = 2147483647;
    const QString shown = QStringLiteral("2147483647");
    return {counts().buys(most, most, most, most).orders(1, 0),
            true,
            {{3, 90}, {2, 90}, {1, 90}, {0, 90}},
            {"共1单 8589934592.0手/单", {shown, shown, shown, shown}, {"25.0%", "25.0%", "25.0%", "25.0%"}},
            zeroBlock()};
}

// An average is a quotient of floats. Above 2^24 these are 2 apart: 16777219 lies between two of them and counts as
// 16777220, the one of an even mantissa. A fifth of it is 3355444.0, where that of the whole number is 3355443.8.
inline PlateState averageOfFloatsState()
{
    return {counts().sells(0, 0, 0, 16777219).orders(0, 5),
            true,
            {{7, 360}},
            zeroBlock(),
            {"共5单 3355444.0手/单", {"0", "0", "0", "16777219"}, {"0.0%", "0.0%", "0.0%", "100.0%"}}};
}

} // namespace tests
