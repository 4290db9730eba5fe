#pragma once

#include "Formula/formulaparam.h"
#include "recording/recordedday.h"

namespace tessi {

// A request for all of the day's records, live ones too, for models that leave the request to their panel.
TC::CFormulaParam wholeDay(const recording::RecordedDay& day);

// The day's level-2 snapshots or, where it has none, level 1: for models that take either.
recording::Stream snapshotStream(const recording::RecordedDay& day);

bool isIndex(const recording::RecordedDay& day);

} // namespace tessi
