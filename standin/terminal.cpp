#include "standin/terminal.h"

#include "Formula/formulamanager.h"
#include "standin/reset.h"

#include <atomic>
#include <stdexcept>

namespace standin {

namespace {

std::atomic<bool> s_running{false};

void resetServices()
{
    // First of all, so that no task meets a service that is half reset.
    resetStrands();
    resetInstruments();
    resetAnswers();
}

} // namespace

Terminal::Terminal()
{
    if (s_running.exchange(true))
        throw std::logic_error("a process has one terminal at a time");
    resetServices();
    startLog();
}

Terminal::~Terminal()
{
    resetServices();
    endLog();
    s_running = false;
}

void Terminal::changeTradeData(const QString& what)
{
    emit utils::CSingletonT<TC::CFormulaManager>::instance()->sigTradeDataChange(what);
}

} // namespace standin
