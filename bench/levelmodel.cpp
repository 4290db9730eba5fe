#include "bench/levelmodel.h"

#include "bench/levelrounds.h"

namespace bench {

namespace {

// For each record of 1,000 levels on each side, of which 200 changed.
Body prepareRecords(bool isOrdered, int (LevelRounds::*take)())
{
    auto rounds = std::make_shared<LevelRounds>(LevelOptions{.isOrdered = isOrdered});
    return {[rounds, take](int) { return (*rounds.*take)(); }, [rounds] { rounds->begin(); }};
}

// For each 2,000 rows, 200 of them with a change.
Body prepareRows(void (LevelRounds::*make)())
{
    auto rounds = std::make_shared<LevelRounds>();
    return {[rounds, make](int times) {
        for (int i = 0; i < times; ++i)
            (*rounds.*make)();
        return times;
    }};
}

Body prepareClear()
{
    auto rounds = std::make_shared<LevelRounds>();
    return {[rounds](int) {
                rounds->clear();
                return 1;
            },
            [rounds] {
                rounds->begin();
                rounds->takeRecords();
                rounds->read();
            }};
}

} // namespace

std::vector<Operation> levelModelOperations()
{
    return {
        {"thousand_record", [] { return prepareRecords(true, &LevelRounds::takeRecords); }},
        {"thousand_record_reference", [] { return prepareRecords(true, &LevelRounds::takeRecordsByReference); }},
        {"thousand_record_unordered", [] { return prepareRecords(false, &LevelRounds::takeRecords); }},
        {"thousand_check_update", [] { return prepareRows(&LevelRounds::read); }, 100},
        {"thousand_bare_rows", [] { return prepareRows(&LevelRounds::makeRows); }, 100},
        {"thousand_clear", prepareClear, 1},
    };
}

} // namespace bench
