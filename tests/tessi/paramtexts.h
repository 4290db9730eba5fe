#pragma once

#include "indexui/tessimodel/cmodeltodayparam.h"
#include "tests/tessi/plainparams.h"
#include "utils/timeutils.h"

#include <string>

namespace tests {

// A time of the day's clock, "hh:mm:ss", in milliseconds.
inline __int64 clockOn(const recording::RecordedDay& day, const std::string& clock)
{
    const auto part = [&clock](std::size_t from) { return std::stoi(clock.substr(from, 2)); };
    return utils::timeToMilliseconds(day.tradingDay / 10000, day.tradingDay / 100 % 100, day.tradingDay % 100, part(0),
                                     part(3), part(6));
}

// "0 1 2 -1 1028": the list in force.
inline std::string listOf(const TC::CModelTodayParam& model)
{
    std::string text;
    for (const int entry : *model.m_paramList)
        text += (text.empty() ? "" : " ") + std::to_string(entry);
    return text;
}

// The number of the parameter that an entry of a list stands for, without its mark.
inline int idOf(int entry)
{
    return entry >= 1000 ? entry - 1000 : entry;
}

// "0 [10.02]\n" for each row of the list in force, as `textOf` says for its number.
template <class TextOf>
std::string listedTextsBy(const TC::CModelTodayParam& model, const TextOf& textOf)
{
    std::string text;
    for (const int entry : *model.m_paramList)
        text += entry < 0 ? "\n" : std::to_string(idOf(entry)) + " [" + textOf(idOf(entry)) + "]\n";
    return text;
}

inline std::string shownText(const TC::CModelTodayParam& model, int id)
{
    return model.m_params.at(static_cast<TC::ERealtimeParam>(id)).text.toStdString();
}

// As the model shows them, and as a plain table says.
inline std::string listedTexts(const TC::CModelTodayParam& model)
{
    return listedTextsBy(model, [&model](int id) { return shownText(model, id); });
}

inline std::string listedTexts(const TC::CModelTodayParam& model, const PlainParams::Texts& texts)
{
    return listedTextsBy(model, [&texts](int id) {
        const auto found = texts.find(id);
        return found == texts.end() ? std::string() : found->second;
    });
}

// "1 20 ": rows of the list in force that have no text.
inline std::string emptyRows(const TC::CModelTodayParam& model)
{
    std::string text;
    for (const int entry : *model.m_paramList) {
        if (entry >= 0 && shownText(model, idOf(entry)).empty())
            text += std::to_string(idOf(entry)) + " ";
    }
    return text;
}

} // namespace tests
