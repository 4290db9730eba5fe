#include "tests/recording/sources.h"

#include "recording/errors.h"
#include "recording/importday.h"

#include <map>

namespace recording_test {

namespace {

std::string shenzhenLevels(const std::string& name)
{
    std::string out;
    for (int i = 1; i <= 10; ++i)
        out += name + std::to_string(i) + ",";
    return out;
}

std::string levels(int first)
{
    return std::to_string(first) + ",0,0,0,0,0,0,0,0,0,";
}

} // namespace

const std::string kShenzhenOrderHeader =
    "万得代码,交易所代码,自然日,时间,委托编号,交易所委托号,委托类型,委托代码,委托价格,委托数量,\r\n";
const std::string kShenzhenTradeHeader =
    "万得代码,交易所代码,自然日,时间,成交编号,成交代码,委托代码,BS标志,成交价格,成交数量,叫卖序号,叫买序号,\r\n";
const std::string kShenzhenSnapshotHeader =
    "万得代码,交易所代码,自然日,时间,成交价,成交量,成交额,成交笔数,IOPV,成交标志,BS标志,当日累计成交量,当日成交额,"
    "最高价,最低价,开盘价,前收盘," +
    shenzhenLevels("申卖价") + shenzhenLevels("申卖量") + shenzhenLevels("申买价") + shenzhenLevels("申买量") +
    "加权平均叫卖价,加权平均叫买价,叫卖总量,叫买总量,\r\n";
const std::string kShenzhenQueueHeader =
    "万得代码,交易所代码,自然日,订单时间,买卖方向,成交价格,订单数量,明细个数,订单明细,\r\n";
const std::string kShanghaiOrderHeader = "DataStatus,OrderIndex,OrderChannel,SecurityID,OrderTime,OrderType,OrderNO,"
                                         "OrderPrice,Balance,OrderBSFlag,BizIndex,LocalTime,SeqNo\n";
const std::string kShanghaiTradeHeader = "DataStatus,TradeIndex,TradeChan,SecurityID,TradTime,TradPrice,TradVolume,"
                                         "TradeMoney,TradeBuyNo,TradeSellNo,TradeBSFlag,BizIndex,LocalTime,SeqNo\n";

std::string shenzhenSnapshot(int clock, int bidPrice, int bidVolume, int askPrice, int askVolume)
{
    return "000001.SZ,000001,20170103," + std::to_string(clock) + ",91100,0,0,0,0," + std::string(1, '\0') +
           ", ,268700,2447857,91200,91000,91100,91000," + levels(askPrice) + levels(askVolume) + levels(bidPrice) +
           levels(bidVolume) + "94100,90400,5500,7700,\r\n";
}

std::string shanghaiSnapshots(const std::vector<ShanghaiSnapshot>& rows)
{
    std::string header = "UpdateTime,SecurityID,PreCloPrice,OpenPrice,HighPrice,LowPrice,LastPrice,InstruStatus,"
                         "TradVolume,Turnover,TotalBidVol,WAvgBidPri,TotalAskVol,WAvgAskPri,IOPV";
    for (const std::string side : {"Ask", "Bid"}) {
        for (int i = 1; i <= 10; ++i)
            header += "," + side + "Price" + std::to_string(i) + "," + side + "Volume" + std::to_string(i);
    }
    std::string out = header + "\n";
    const std::string blanks = ",,,,,,,,,,,,,,,,,,";
    for (const ShanghaiSnapshot& row : rows) {
        out += row.clock + ",600519,1845.75999999999999,0,0,0," + row.lastPrice + "," + row.status +
               ",70000,6.159972661970001E9,94900,1762.846000000000003,172082,1900.280999999999949,0," + row.askPrice +
               ",1100" + blanks + "," + row.bidPrice + ",1900" + blanks + "\n";
    }
    return out;
}

// Messages name each file by the path that was given; the tests compare what stands below the folder.
static std::string belowFolder(const TempFolder& folder, const std::string& message)
{
    const std::string prefix = folder.path().string() + "/";
    return message.starts_with(prefix) ? message.substr(prefix.size()) : "[no path] " + message;
}

std::string importError(const TempFolder& folder, int tradingDay)
{
    try {
        recording::importDay(folder.path(), tradingDay);
    } catch (const recording::ReadError& error) {
        return belowFolder(folder, error.what());
    }
    return "nothing was thrown";
}

std::string importNotes(const TempFolder& folder, int tradingDay)
{
    std::vector<std::string> notes;
    recording::importDay(folder.path(), tradingDay, &notes);
    std::string text;
    for (const std::string& note : notes)
        text += belowFolder(folder, note) + "\n";
    return text;
}

} // namespace recording_test
