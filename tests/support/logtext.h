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

} // namespace tests
