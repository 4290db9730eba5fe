#include "apps/tessi/orderfates.h"

#include "quoter/transactiondata.h"

#include <boost/thread/lock_guard.hpp>

namespace tessi {

OrderFates::OrderFates(const TC::CModelDepthEntrust& model)
    : m_model(model)
{
    const boost::lock_guard<boost::recursive_mutex> lock(m_model.m_mutex);
    for (const auto& cancel : m_model.m_cancels)
        m_cancels[cancel->seq].push_back(cancel);
}

OrderFate OrderFates::of(int seq) const
{
    OrderFate fate;
    m_model.getTransactionData(seq, fate.trades);
    // Shenzhen's cancels are among the trades; as rows of the cancel list every market has them.
    std::erase_if(fate.trades, [](const auto& trade) { return trade->transKind == quoter::kTransKindCancel; });
    for (const auto& trade : fate.trades)
        fate.traded += trade->volume;
    if (const auto found = m_cancels.find(seq); found != m_cancels.end())
        fate.cancels = found->second;
    for (const auto& cancel : fate.cancels)
        fate.cancelled += cancel->volume;
    return fate;
}

} // namespace tessi
