#pragma once

#include "tests/tessimodel/oracle/lists/naivefilter.h"

#include <cfloat>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tests::oracle::lists {

// Named as the rows and the models that they are compared with.

struct NaiveTradeRow {
    __int64 time = 0;
    double price = 0;
    int volume = 0;
    int hands = 0;
    int sellSeq = 0;
    int buySeq = 0;
    int prevBuyIndex = -1;
    int nextBuyIndex = -1;
    int prevSellIndex = -1;
    int nextSellIndex = -1;
    short sellRun = 0;
    short buyRun = 0;
    int sellRunHands = 0;
    int buyRunHands = 0;
    int tickDirection = 0;
    int transKind = 0;
    int tradeFlag = 0;
    bool isUp = true;
    __int64 fullVolume = 0;
};

bool isOrderSpecial(const RecordPtr& order);
std::string orderSpecialName(const RecordPtr& order);

// What a search by a row of the tick list reads of it.
struct NaiveTick {
    int timetag = 0;
    int volume = 0;
};

// The trade list and the view over it.
class NaiveTradeList {
public:
    using Row = std::shared_ptr<NaiveTradeRow>;
    using SeqPair = std::pair<int, int>;
    using Chains = std::map<int, std::vector<int>>;

    explicit NaiveTradeList(Counters& counted)
        : m_counters(counted)
        , m_strand(counted)
    {}

    void setStock(int instrument);
    void initStockParams();
    void callback(const ListStep& step);
    void work() { m_strand.work(); }
    void setFilterParam(const Filter& filter);
    int append(int instrument, const RecordPtr& record);
    void reprice(const RecordPtr& snapshot, double price);
    int tryMatch(int instrument);
    void clear();
    void clearEntrusts();
    void clearQuotes();
    void clearTransactions();

    Row getData(int index) const;
    SeqPair find(int second) const;
    int find(int second, bool forward) const;
    bool tryFind(const NaiveTick* tick, SeqPair& rows) const;
    int tracebackSeq(int index) const;
    RecordPtr getOrder(__int64 seq) const;
    int getEntrustVolume(const Row& row, bool isBuy) const;

    int getStartIndex() const { return m_startIndex; }
    int getEndIndex() const { return m_endIndex; }
    void setFullHeightHandle(int handle) { m_fullHeightHandle = handle; }
    bool setViewTimeRange(int start, int end);
    bool recalcMaxMinSeqAndPrice();
    bool recalcMaxMinPrice();
    bool findSeq(int second, int volume, SeqPair& rows);
    bool tryMatch(int second, int volume, SeqPair& rows);
    int getDataKind(const Row& row, bool isBuy) const;
    SeqPair getCurrSeqPair(int index) const;
    SeqPair getNextSeqPair(int index) const;
    SeqPair getPreSeqPair(int index) const;
    int getCurrQuoterTimgtag(int index) const;
    int getNextQuoterTimgtag(int second) const;
    int getPreQuoterTimgtag(int second) const;

    double m_priceTick = 0.001;
    double m_lastClose = DBL_MAX;
    int m_volumeUnit = 1;
    int m_rowCount = 0;
    bool m_changed = false;
    int m_stock = -1; // place in instruments(), -1 for none
    bool m_isType277 = false;
    bool m_isType10006 = false;
    bool m_historyLoaded = false;
    std::vector<Row> m_rows;
    std::vector<Row> m_filteredRows;
    std::map<__int64, RecordPtr> m_orders;
    std::vector<RecordPtr> m_quotes;
    std::vector<RecordPtr> m_pendingTransactions;
    int m_lastMatchedQuote = -1;
    std::map<int, SeqPair> m_seqPairs;
    Chains m_buyChains;
    Chains m_sellChains;
    std::map<int, int> m_minuteIndex;
    Filter m_filter;

    bool m_viewFlag = false;
    int m_fullHeightHandle = 4;
    double m_maxPrice = 0;
    double m_minPrice = 0;
    double m_priceStep = 0.01;
    int m_viewStartTime = -1;
    int m_viewEndTime = -1;
    int m_startIndex = -1;
    int m_endIndex = -1;
    int m_totalHeight = 0;

private:
    using Pairs = std::map<int, SeqPair>;

    void doEntrust(int kind, const BatchPtr& batch);
    void doTransaction(int kind, const BatchPtr& batch);
    void liveTransaction(const RecordPtr& last);
    void doQuoter(int kind, const BatchPtr& batch);
    bool isFollowed(int instrument) const;
    bool isWaiting() const;

    int appendOrder(int instrument, const RecordPtr& order);
    int appendSnapshot(int instrument, const RecordPtr& snapshot);
    int appendTrade(int instrument, const RecordPtr& trade);
    void compareWithPrevious(NaiveTradeRow& row) const;
    void compareWithLastClose(NaiveTradeRow& row) const;
    void chain(NaiveTradeRow& row, bool isBuy);
    bool passFilter(const NaiveTradeRow& row) const;

    int quoteCount() const { return static_cast<int>(m_quotes.size()); }
    const Record& quoteAt(int index) const { return *m_quotes.at(static_cast<std::size_t>(index)); }
    int keyOf(const Record& quote) const { return static_cast<int>(secondOf(quote)); }
    double lastPriceOf(const Record& quote) const;
    __int64 targetOf(int quote) const;
    bool matchNext(int& start);
    void writePair(const Record& quote, SeqPair pair);
    int leaveOpen(int instrument);

    int startOfMinute(int second) const;
    int chainSum(const Row& row, bool isBuy, bool forward) const;
    bool isClosed(int key) const;
    bool answerSplit(Pairs::iterator found, int second, SeqPair answer, int newFirst, SeqPair& rows);
    Pairs::const_iterator covering(int index) const;
    int greatestKeyUpTo(int second) const;

    Counters& m_counters;
    NaiveStrand m_strand;
    std::map<int, double> m_newPrices; // by the snapshot's name
};

} // namespace tests::oracle::lists
