#pragma once

#include "tests/tessimodel/oracle/naivemodel.h"
#include "tests/tessimodel/oracle/statelines.h"

namespace tests::oracle {

void writeState(Lines& out, const NaiveLevel& level, bool isBid, int key);
void writeState(Lines& out, const NaiveBook& book);
void writeSharedState(Lines& out, const NaiveSnapshotModel& model); // of both thousand-level models
void writeState(Lines& out, const NaiveModel& model);
void writeState(Lines& out, const NaiveManager& manager);
void writeState(Lines& out, const NaivePanel& panel);

} // namespace tests::oracle
