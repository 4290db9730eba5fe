#pragma once

#include "tests/tessimodel/oracle/streams.h"

#include <fmt/format.h>

#include <string>

namespace tests::oracle {

// Of a step that streams of several models have.
template <class Step>
std::string commonText(const Step& step)
{
    using Action = typename Step::Action;
    if constexpr (requires { Action::Release; }) {
        if (step.action == Action::Release)
            return "what was cleared is freed";
    }
    if constexpr (requires { Action::InitParams; }) {
        if (step.action == Action::InitParams)
            return "initStockParams";
    }
    if constexpr (requires { Action::NewLoan; }) {
        if (step.action == Action::NewLoan)
            return fmt::format("setNewLoan({})", step.flag);
    }
    if (step.action == Action::Follow)
        return "follow " + nameOf(step.instrument);
    return step.action == Action::Clear ? "clear" : "the strand works";
}

} // namespace tests::oracle
