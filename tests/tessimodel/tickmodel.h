#pragma once

#include "tests/tessimodel/queuemodel.h"
#include "tests/tessimodel/thousandmodel.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

// What tests are written with that are about every model with a tick-built book.
namespace tests {

// A followed model, and what both tick-built books tell.
template <class Model>
struct ModelStory : FollowedModel<Model> {
    explicit ModelStory(bool suppressTickFlags = false)
        : FollowedModel<Model>(suppressTickFlags, 1)
    {}

    std::string levels() const { return levelsText(this->model.m_book); }

    // "2 orders, 1 trades, loaded 3, flags 1"
    std::string kept() const
    {
        return fmt::format("{} orders, {} trades, loaded {}, flags {}", this->model.m_orders.size(),
                           this->model.m_transactions.size(), this->model.m_loadedHistory.load(),
                           this->model.m_updateFlags.load());
    }

    int takeFlags() { return this->model.m_updateFlags.exchange(0); }

    // The book is of another instrument from now on.
    void estrangeBook() { this->model.m_book.m_stock = this->terminal.instruments.add(stock("SZ", "000002")); }
};

using BothModels = ::testing::Types<Thousand, Queue>;

struct ModelNames {
    template <class Model>
    static std::string GetName(int)
    {
        return std::is_same_v<Model, Queue> ? "Queue" : "Thousand";
    }
};

} // namespace tests
