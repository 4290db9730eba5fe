#pragma once

#include "tests/tessimodel/oracle/params/naiveparams.h"

#include <optional>

namespace tests::oracle::params {

// The naive side of a player.
struct NaiveSide {
    using Model = NaiveParams;

    void make(std::optional<NaiveParams>& model) const { model.emplace(*counters); }
    static int parameter(int id) { return id; }
    static int formatFlag(int flag) { return flag; }

    ParamCounters* counters;
};

} // namespace tests::oracle::params
