#pragma once

#include "tests/tessimodel/oracle/copiedmodels.h"
#include "tests/tessimodel/oracle/params/paraminstruments.h"
#include "utils/int64.h"

#include <memory>
#include <string>
#include <vector>

namespace quoter {
struct QuoteAux;
struct QuoterBase;
} // namespace quoter

// What happens to a parameter table, step by step. The records are the terminal's own: no model changes one, so both
// sides may have the same.
namespace tests::oracle::params {

using RecordPtr = std::shared_ptr<quoter::QuoterBase>;
using AuxPtr = std::shared_ptr<quoter::QuoteAux>;

// The models of a stream, among which copies go to and fro. Their source is always alive.

struct ParamStep {
    enum class Action {
        Follow,
        Quotes, // quoterCallback
        Aux,
        Dish,
        Average,
        AverageOfRecord,
        LastClose,
        PriceTick, // the member is written
        Level2,
        Connect,
        Clear,
        InitParams,
        WriteText,   // setParam of a text
        WriteValue,  // setParam of a value and its base
        WriteRecord, // setParam of a record
        LastPrice,   // getLastPrice
        Colour,      // getPriceColor
        Switch,      // an answer of the terminal
        Renew,       // an instrument gets other facts
        DateSource,
        CopyConstruct, // another model is made as a copy of the one in use, and used on
        CopyAssign,    // another model becomes a copy of the one in use, and is used on
        Select,        // another model is used on
        Construct,     // another model is made anew, and used on
        Receipt        // m_gdrStock is the receipt whose facts change, with these
    };
    static constexpr std::size_t kActions = 25;

    Action action = Action::Clear;
    int kind = 1;
    int ignored = 0;                // the first argument of quoterCallback
    std::vector<RecordPtr> records; // one where a step takes one
    AuxPtr aux;
    ReceiptFacts receipt;
    int number = 0; // instrument, parameter, answer, model, date in days from the last trading day
    int flag = 0;
    bool on = false;
    double value = 0;
    double base = 0;
    __int64 inner = 0;
    __int64 outer = 0;
    std::string text;
    std::string key;
};

std::string text(const ParamStep& step);

} // namespace tests::oracle::params
