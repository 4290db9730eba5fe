#pragma once

#include "tests/tessimodel/quoterthousand.h"
#include "tests/tessimodel/thousandmodel.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <type_traits>

// What the two models of a whole book do alike: the tick-built one and the one of thousand-level snapshots.
namespace tests {

using BookModels = ::testing::Types<Thousand, QuoterThousand>;

struct BookModelNames {
    template <class Model>
    static std::string GetName(int)
    {
        return std::is_same_v<Model, Thousand> ? "TickBuilt" : "SnapshotDriven";
    }
};

// A model of either kind.
template <class Model>
class BookModelTest : public ::testing::Test, protected FollowedModel<Model> {
protected:
    // Puts an instrument there, also in place of the one with its name, follows it and delivers for it.
    void follow(const std::string& market, const std::string& code, const std::set<int>& types = {})
    {
        this->terminal.instruments.add(stock(market, code, types));
        this->model.setStock(keyOf(market, code));
        this->feed.request(market, code);
    }
};

} // namespace tests
