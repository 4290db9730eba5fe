#include "apps/tessi/cancelspanel.h"

#include "apps/tessi/orderfates.h"
#include "apps/tessi/ordertext.h"
#include "apps/tessi/panelfilter.h"
#include "apps/tessi/table.h"
#include "apps/tessi/text.h"

namespace tessi {

CancelsPanel::CancelsPanel(const recording::RecordedDay& day, const PanelOptions& options)
    : m_orders(day)
    , m_filter(filterOf(options))
{}

Table CancelsPanel::rows()
{
    Table table({{"time"},
                 {"no", true},
                 {"side"},
                 {"kind"},
                 {"price", true},
                 {"hands", true},
                 {"shares", true},
                 {"seq", true},
                 {"ordered", true},
                 {"traded", true}});
    TC::CModelDepthEntrust& model = *m_orders.model;
    model.setFilterParam(m_filter);
    const OrderFates fates(model);
    for (int i = 0; const auto cancel = model.getCancelData(i); ++i) {
        TC::CModelDepthEntrust::OrderRow order;
        model.getOrderData(cancel->seq, order); // it is known: the filter asked for it
        table.add({clockText(cancel->time), numberText(model.tracebackCancelSeq(i)),
                   TC::getOrderSymbol(order).toStdString(), kindText(*order),
                   priceText(order->price, model.m_priceTick), numberText(cancel->hands), numberText(cancel->volume),
                   numberText(cancel->seq), numberText(order->volume), numberText(fates.of(cancel->seq).traded)},
                  tintOf(*order));
    }
    return table;
}

} // namespace tessi
