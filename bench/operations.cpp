#include "bench/operations.h"

#include "bench/book.h"
#include "bench/bookmodel.h"
#include "bench/levelmodel.h"
#include "bench/orderlist.h"
#include "bench/plate.h"
#include "bench/queuemodel.h"
#include "bench/reading.h"
#include "bench/statistics.h"
#include "bench/todayparam.h"
#include "bench/tradelist.h"
#include "indexui/tessimodel/cmodeltransaction.h"
#include "net/rpcengine.h"
#include "quoter/quoteralldata.h"
#include "standin/terminal.h"
#include "utils/stockkey.h"

#include <QString>

namespace bench {

namespace {

using Batch = std::vector<std::shared_ptr<quoter::QuoterBase>>;

constexpr __int64 kOpening = 1709256600000; // 2024-03-01 09:30:00

// One snapshot of a busy stock: the volume grows, the price goes up and down by a tick.
std::shared_ptr<quoter::QuoterAllData> snapshot(int index)
{
    auto record = std::make_shared<quoter::QuoterAllData>();
    record->timetag = kOpening + index * 3000LL;
    record->tradeStatus = 13;
    record->lastPrice = 10.0 + index % 5 / 100.0;
    record->bidPrice[0] = record->lastPrice - 0.01;
    record->askPrice[0] = record->lastPrice;
    record->volume = index + 1;
    return record;
}

// A terminal and a tick list that follows one stock in it.
struct TickList {
    TickList()
    {
        standin::InstrumentDescription description;
        description.market = "SZ";
        description.code = "000001";
        terminal.instruments.add(description);
        terminal.log.setLevel(50000);
        model.setStock(QString::fromStdString(utils::zlStockKey("SZ", "000001")));
    }

    standin::Terminal terminal;
    TC::CModelTransaction model;
};

Body prepareTickListLive()
{
    constexpr int kDay = 5000;
    auto list = std::make_shared<TickList>();
    auto pushes = std::make_shared<std::vector<Batch>>();
    for (int i = 0; i < kDay; ++i)
        pushes->push_back({snapshot(i)});
    return {[list, pushes](int times) {
        for (int i = 0; i < times; ++i) {
            if (i % kDay == 0)
                list->model.quoterCallBack(0, 0, {});
            list->model.quoterCallBack(0, 1, (*pushes)[static_cast<std::size_t>(i % kDay)]);
        }
        return times;
    }};
}

Body prepareTickListHistory()
{
    constexpr int kDay = 5000;
    auto list = std::make_shared<TickList>();
    auto day = std::make_shared<Batch>();
    for (int i = 0; i < kDay; ++i)
        day->push_back(snapshot(i));
    return {[list, day](int times) {
        int done = 0;
        for (; done < times; done += kDay)
            list->model.quoterCallBack(0, 0, *day);
        return done;
    }};
}

Body prepareStrand()
{
    auto terminal = std::make_shared<standin::Terminal>();
    terminal->strands.runByHand();
    auto strand = utils::CSingletonT<net::RPCEngine>::instance()->getStrand("modulegroup");
    return {[terminal, strand](int times) {
        int ran = 0;
        for (int i = 0; i < times; ++i) {
            strand->post([&ran] { ++ran; });
            terminal->strands.drain("modulegroup");
        }
        return ran;
    }};
}

std::vector<Operation> frameOperations()
{
    return {
        {"tick_list_live_snapshot", prepareTickListLive},
        {"tick_list_history_snapshot", prepareTickListHistory},
        {"strand_post_to_run", prepareStrand},
    };
}

} // namespace

const std::vector<Operation>& operations()
{
    static const std::vector<Operation> all = [] {
        std::vector<Operation> gathered;
        for (auto topic : {frameOperations, readingOperations, bookOperations, bookModelOperations,
                           queueModelOperations, levelModelOperations, orderListOperations, tradeListOperations,
                           todayParamOperations, statisticsOperations, plateOperations}) {
            for (Operation& operation : topic())
                gathered.push_back(std::move(operation));
        }
        return gathered;
    }();
    return all;
}

} // namespace bench
