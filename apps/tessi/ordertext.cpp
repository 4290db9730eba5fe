#include "apps/tessi/ordertext.h"

#include "indexui/tessimodel/cmodeldepthentrust.h"
#include "indexui/tessimodel/cmodeldepthtransaction.h"
#include "quoter/orderdata.h"

namespace tessi {

std::string kindText(const TC::DepthOrderData& order)
{
    // Kinds are named by their record.
    const auto record = std::make_shared<quoter::OrderData>();
    record->orderKind = order.orderKind;
    return TC::getOrderSpecialName(record).toStdString();
}

Table::Tint tintOf(const TC::DepthOrderData& order)
{
    switch (order.bsFlag) {
    case quoter::kSideBuy:
        return Table::Tint::Rise;
    case quoter::kSideSell:
        return Table::Tint::Fall;
    default:
        return Table::Tint::None;
    }
}

} // namespace tessi
