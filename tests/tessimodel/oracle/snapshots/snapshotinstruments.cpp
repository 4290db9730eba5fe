#include "tests/tessimodel/oracle/snapshots/snapshotinstruments.h"

#include "standin/instruments.h"
#include "tests/support/instruments.h"
#include "tests/support/oddvalues.h"
#include "utils/timeutils.h"

#include <cfloat>

namespace tests::oracle::snapshots {

namespace {

using Description = standin::InstrumentDescription;

constexpr int kAfterHours = 277;
constexpr int kAfterHoursSz = 10006;

Description with(Description out, double priceTick, double lastClose)
{
    out.priceTick = priceTick;
    out.lastClose = lastClose;
    out.lastCloses = {{dateAt(1), lastClose + 2 * priceTick}, {dateAt(2), kNaN}};
    return out;
}

Description index(Description out)
{
    out.isIndex = true;
    return out;
}

std::vector<Description> allInstruments()
{
    const std::set<int> both{kAfterHours, kAfterHoursSz};
    return {
        with(stock("SH", "600000"), 0.01, 10.0),
        with(stock("SH", "688001", {kAfterHours}), 0.01, 10.0),
        with(stock("SZ", "300001", {kAfterHoursSz}), 0.01, 10.0),
        with(stock("SZ", "000001"), 0.001, 1.0),
        with(stock("BJ", "430001", both), 0.25, 10.0),
        with(stock("SSE", "688002", {kAfterHours}), 0.001, 1.0),
        with(stock("SZSE", "300002", {kAfterHoursSz}), 0.01, 10.0),
        with(stock("HK", "00700", {kAfterHoursSz}), 0.2, 300.0),
        with(stock("HK", "300001"), 0.2, 300.0), // the code of one with an after-hours phase in Shenzhen
        with(stock("SZ", "00700"), 0.01, 10.0),  // the other way round
        with(stock("YSWP", "USDCNH"), 0.0001, 7.0),
        with(stock("YSWP", "CNYSWP", {kAfterHours}), 0.01, 10.0),
        with(stock("yswp", "USDCNH"), 0.01, 10.0),
        with(stock("SHFE", "rb2405"), 0.2, 3500.0),
        index(with(stock("SH", "000001"), 0.001, 3000.0)),
        index(with(stock("SZ", "399006", {kAfterHoursSz}), 0.01, 10.0)),
        with(stock("CN", "CNINDEX", {kAfterHours}), 0.01, 10.0),
        with(stock("CN", "CNINDEX2"), 0.01, 10.0),
        with(stock("SH", "600001", {kAfterHours}), 1e-6, 0.001),
        with(stock("BJ", "430002"), 0.5, kNaN),
        with(stock("BJ", "430003"), 0.01, 10.0),
        with(stock("SSE", "600002"), 0.01, 10.0),
        with(stock("SZSE", "000002"), 0.01, 10.0),
        with(stock("SS", "600002"), 0.01, 10.0), // an exchange's name that is none
    };
}

} // namespace

int dateAt(int number)
{
    constexpr int kDay = standin::kDefaultTradingDay;
    constexpr int kSecondsPerDay = 24 * 60 * 60;
    const __int64 lastTradingDay = utils::timeToMilliseconds(kDay / 10000, kDay / 100 % 100, kDay % 100, 0, 0, 0);
    return static_cast<int>(lastTradingDay / 1000) - number * kSecondsPerDay;
}

const std::vector<Description>& snapshotInstruments()
{
    static const std::vector<Description> all = allInstruments();
    return all;
}

QString snapshotKeyOf(int instrument)
{
    if (instrument == kUnknownInstrument)
        return "SH:unknown";
    const Description& found = snapshotInstruments().at(static_cast<std::size_t>(instrument));
    return tests::keyOf(found.market, found.code);
}

std::string snapshotNameOf(int instrument)
{
    if (instrument == kUnknownInstrument)
        return "an unknown instrument";
    const Description& found = snapshotInstruments().at(static_cast<std::size_t>(instrument));
    return found.market + ':' + found.code;
}

void prepareSnapshots(standin::Terminal& terminal)
{
    for (const Description& description : snapshotInstruments())
        terminal.instruments.add(description);
    terminal.answers.setNewLoanFactor(1);
}

Description renewed(int instrument, int facts)
{
    constexpr double kTicks[] = {0.001, 0.01, 0.2, 1e-6, 0.25, 0.0, -0.01, kNaN, 0.01, 2e-5};
    constexpr double kCloses[] = {10.0, 10.0, kNaN, kInfinity, -kInfinity, DBL_MAX, 0.0, 0.0005, 9.98, 10.000005, -10};
    const auto at = [](const auto& values, int number) {
        return values[static_cast<std::size_t>(number) % (sizeof(values) / sizeof(values[0]))];
    };
    Description out = snapshotInstruments().at(static_cast<std::size_t>(instrument));
    out = with(out, at(kTicks, facts % 16), at(kCloses, facts / 16 % 16));
    if (facts / 256 % 2 == 1)
        out.types = facts % 3 == 0 ? std::set<int>{kAfterHours} : std::set<int>{kAfterHoursSz};
    if (facts / 512 % 2 == 1)
        out.isIndex = !out.isIndex;
    if (facts / 1024 % 2 == 1)
        out.lastCloses[dateAt(0)] = out.lastClose + 0.01;
    return out;
}

} // namespace tests::oracle::snapshots
