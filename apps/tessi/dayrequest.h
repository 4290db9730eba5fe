#pragma once

#include "Formula/formulaparam.h"

namespace recording {
struct RecordedDay;
}

namespace tessi {

// A request for all of the day's records, live ones too, for models that leave the request to their panel.
TC::CFormulaParam wholeDay(const recording::RecordedDay& day);

} // namespace tessi
