#include "apps/tessi/orderspanel.h"

#include "apps/tessi/orderfates.h"
#include "apps/tessi/ordertext.h"
#include "apps/tessi/panelfilter.h"
#include "apps/tessi/table.h"
#include "apps/tessi/text.h"

namespace tessi {

OrdersPanel::OrdersPanel(const recording::RecordedDay& day, const PanelOptions& options)
    : m_orders(day)
    , m_filter(filterOf(options))
{}

Table OrdersPanel::rows()
{
    Table table({{"row", true},
                 {"time"},
                 {"no", true},
                 {"side"},
                 {"kind"},
                 {"price", true},
                 {"hands", true},
                 {"shares", true},
                 {"seq", true},
                 {"traded", true},
                 {"cancelled", true},
                 {"left", true}});
    TC::CModelDepthEntrust& model = *m_orders.model;
    model.setFilterParam(m_filter);
    const OrderFates fates(model);
    int row = 0; // of all orders, which the filtered ones are a part of
    for (int i = 0; const auto order = model.getOrderData(i, false); ++i, ++row) {
        while (model.getOrderData(row, true) != order)
            ++row;
        const OrderFate fate = fates.of(order->seq);
        table.add({numberText(row), clockText(order->time), numberText(model.tracebackOrderSeq(i)),
                   TC::getOrderSymbol(order).toStdString(), kindText(*order),
                   priceText(order->price, model.m_priceTick), numberText(order->hands), numberText(order->volume),
                   numberText(order->seq), numberText(fate.traded), numberText(fate.cancelled),
                   numberText(order->volume - fate.traded - fate.cancelled)},
                  tintOf(*order));
    }
    return table;
}

} // namespace tessi
