#pragma once

#include "indexui/tessimodel/cmodeldepthentrust.h"
#include "utils/int64.h"

#include <unordered_map>
#include <vector>

namespace tessi {

// What became of an order, as the order list tells it.
struct OrderFate {
    TC::CModelDepthEntrust::Trades trades; // without cancels, as they came
    std::vector<TC::CModelDepthEntrust::CancelRow> cancels;
    __int64 traded = 0; // shares
    __int64 cancelled = 0;
};

// Looks up orders in a list that has got its day. One thread.
class OrderFates {
public:
    explicit OrderFates(const TC::CModelDepthEntrust& model);

    OrderFate of(int seq) const;

private:
    const TC::CModelDepthEntrust& m_model;
    std::unordered_map<int, std::vector<TC::CModelDepthEntrust::CancelRow>> m_cancels; // of every market, by order
};

} // namespace tessi
