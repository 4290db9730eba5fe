#pragma once

#include <fmt/format.h>

#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <utility>

// Models of which one is in use, and which are copied over one another: a copy must go on by itself. The
// source of a copy is always alive.
//
// The steps that do this are CopyConstruct, CopyAssign, Select and Construct of a stream's own actions; the step's
// number says with which model.
namespace tests::oracle {

inline constexpr int kModels = 3;

template <class Step>
std::string copyStepText(const Step& step)
{
    using Action = typename Step::Action;
    switch (step.action) {
    case Action::CopyConstruct:
        return fmt::format("model {} is made as a copy, and used on", step.number);
    case Action::CopyAssign:
        return fmt::format("model {} becomes a copy, and is used on", step.number);
    case Action::Select:
        return fmt::format("model {} is used on", step.number);
    default:
        return fmt::format("model {} is made anew, and used on", step.number);
    }
}

template <class Model>
class CopiedModels {
public:
    using Make = std::function<void(std::optional<Model>&)>; // puts a new model in
    using Models = std::array<std::optional<Model>, kModels>;

    explicit CopiedModels(Make make)
        : m_make(std::move(make))
    {
        for (auto& model : m_models)
            m_make(model);
    }

    template <class Step>
    void apply(const Step& step)
    {
        using Action = typename Step::Action;
        const auto other = static_cast<std::size_t>(step.number);
        if (step.action == Action::CopyAssign) {
            const Model& source = inUse(); // may be the same model
            *m_models[other] = source;
        } else if (step.action == Action::CopyConstruct && other != m_used) {
            m_models[other].emplace(inUse());
        } else if (step.action == Action::Construct) {
            m_make(m_models[other]);
        }
        m_used = other;
    }

    Model& inUse() { return *m_models[m_used]; }
    const Model& inUse() const { return *m_models[m_used]; }
    const Models& all() const { return m_models; }

private:
    Make m_make;
    Models m_models;
    std::size_t m_used = 0;
};

} // namespace tests::oracle
