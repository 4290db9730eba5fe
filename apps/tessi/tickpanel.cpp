#include "apps/tessi/tickpanel.h"

#include "apps/tessi/dayrequest.h"
#include "apps/tessi/table.h"
#include "apps/tessi/text.h"
#include "recording/datalayer.h"
#include "utils/stockkey.h"

namespace tessi {

TickPanel::TickPanel(const recording::RecordedDay& day, const PanelOptions& /*options*/)
    : m_stream(snapshotStream(day))
    , m_panelThread(utils::CSingletonT<net::RPCEngine>::instance()->getStrand("panel"))
{
    m_model.setStock(QString::fromStdString(utils::zlStockKey(day.instrument.market, day.instrument.code)));
}

void TickPanel::subscribe(recording::DataLayer& data)
{
    TC::CFormulaParam request;
    m_model.getParams(request);
    data.subscribe(request, m_stream, [this](int batchKind, const recording::RecordBatch& records) {
        m_panelThread->post([this, batchKind, records] { m_model.quoterCallBack(0, batchKind, records); });
    });
}

Table TickPanel::rows()
{
    Table table({{"time"},
                 {"price", true},
                 {"volume", true},
                 {"total", true},
                 {"side"},
                 {"bid", true},
                 {"ask", true},
                 {"status", true}});
    const auto price = [this](double value) { return priceText(value, m_model.m_priceTick); };
    for (const TC::TransData& row : m_model.m_datas) {
        table.add({clockText(row.timetag), price(row.price), std::to_string(row.volume),
                   std::to_string(row.totalVolume), row.isBuy ? "B" : "S", price(row.bidPrice), price(row.askPrice),
                   std::to_string(row.tradeStatus)},
                  row.isBuy ? Table::Tint::Rise : Table::Tint::Fall);
    }
    return table;
}

} // namespace tessi
