#pragma once

#include "standin/terminal.h"

#include <sstream>
#include <string>
#include <vector>

namespace tests {

// The texts of all lines that were logged, oldest first.
inline std::vector<std::string> logTexts(const standin::Terminal& terminal)
{
    std::vector<std::string> texts;
    for (const auto& line : terminal.log.lines())
        texts.push_back(line.text);
    return texts;
}

// "[object] rest", with the object's address as the models write it.
inline std::string logLine(const void* object, const std::string& rest)
{
    std::ostringstream text;
    text << "[" << object << "] " << rest;
    return text.str();
}

// The line of a batch for SZ 000001, as the models log it when it is delivered: batchLine(&model,
// "TC::CModelDepthQueue::queueCallback", 2, "20240301093006-20240301093007").
inline std::string batchLine(const void* model, const std::string& callback, int count, const std::string& range)
{
    return logLine(model, "[" + callback + "] data return, key: SZ_000001, count: " + std::to_string(count) +
                              ", range: " + range);
}

} // namespace tests
