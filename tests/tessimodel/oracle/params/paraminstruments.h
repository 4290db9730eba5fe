#pragma once

#include "standin/terminal.h"

#include <memory>
#include <vector>

#include <QString>

// Instruments of every class and for every list, with the values at which a rule turns.
namespace tests::oracle::params {

inline constexpr int kUnknownInstrument = -1;

const std::vector<standin::InstrumentDescription>& paramInstruments();

// How many come before those with facts that no instrument service should send.
int soundParamInstruments();

// The terminal's key, and one that it does not know for kUnknownInstrument.
QString paramKeyOf(int instrument);
std::string paramNameOf(int instrument);

// The instruments as they are at first, and every answer no.
void prepareParams(standin::Terminal& terminal);

// The instrument as the next day has it: other facts under the same key. Who follows the old one keeps it.
void renew(standin::Terminal& terminal, int instrument);

// The receipt of an instrument, kUnknownInstrument without a known one.
int receiptOf(int instrument);

// What a table reads of a receipt.
struct ReceiptFacts {
    double close = 0;
    double rate = 0;
    int shares = 0;
    int perShares = 0;
};

// A receipt whose facts change under who holds it: the same one on every call, with these facts from now on.
std::shared_ptr<ztservice::CInstrumentDetail> changingReceipt();
void changeReceipt(const ReceiptFacts& facts);

// What the terminal is asked besides the instruments.
enum class Answer {
    SignedIn,
    UserBrovan,
    BoardNewRules,
    NewBondsAuth,
    DataCenterBrovan,
    BlockTradeModule,
    OwnIndex,
    NewLoanFactor
};

inline constexpr int kAnswers = 8;

void setAnswer(standin::Terminal& terminal, Answer answer, bool on);
const char* answerName(Answer answer);

} // namespace tests::oracle::params
