#include "exchange/tradingday.h"

#include <chrono>
#include <stdexcept>
#include <string>

namespace exchange {

namespace {

constexpr int kFirstDay = 19700102;
constexpr int kLastDay = 20380118;

std::chrono::year_month_day dateOf(int yyyymmdd)
{
    const int monthAndDay = yyyymmdd % 10000;
    return {std::chrono::year{yyyymmdd / 10000}, std::chrono::month{static_cast<unsigned>(monthAndDay / 100)},
            std::chrono::day{static_cast<unsigned>(monthAndDay % 100)}};
}

} // namespace

bool isTradingDay(int yyyymmdd)
{
    return yyyymmdd >= kFirstDay && yyyymmdd <= kLastDay && dateOf(yyyymmdd).ok();
}

__int64 midnightOf(int yyyymmdd)
{
    using namespace std::chrono;
    if (!isTradingDay(yyyymmdd))
        throw std::invalid_argument("no trading day: " + std::to_string(yyyymmdd) + ", wanted is yyyymmdd");
    return milliseconds{sys_days{dateOf(yyyymmdd)}.time_since_epoch() - hours{8}}.count();
}

} // namespace exchange
