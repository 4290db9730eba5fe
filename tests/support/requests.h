#pragma once

#include "Formula/formulaparam.h"

#include <string>

namespace tests {

// A request with a strange value in every field.
TC::CFormulaParam strangeRequest();

// The strange request once a model of ticks has filled it in: for the stream "QUOTERVOL" from the time, in
// milliseconds.
TC::CFormulaParam requestByVolume(const QString& market, const QString& code, __int64 begin);

// The same of a model of the quote: for the stream "QUOTER".
TC::CFormulaParam requestOfQuotes(const QString& market, const QString& code, __int64 begin);

// All fields: "7 SZ 000001 range 0 QUOTERVOL from 1709222400000/0 to 9223372036854775807/0 every 60000".
std::string requestText(const TC::CFormulaParam& param);

} // namespace tests
