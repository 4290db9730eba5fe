#pragma once

#include "tests/tessimodel/oracle/streams.h"

// What the naive models know of an instrument.
namespace tests::oracle {

const Instrument& instrumentAt(int instrument);
bool isTyped(int type, const std::string& market, const std::string& code);
int sharesPerHand(const Instrument& stock);

bool isOfType(const RecordPtr& record, Record::Type type); // not of a null record

} // namespace tests::oracle
