#include "indexui/tessimodel/cwatchplatewidget.h"

#include "indexui/tessimodel/detail/batch.h"
#include "indexui/tessimodel/detail/colorkeys.h"
#include "indexui/tessimodel/detail/numbers.h"
#include "quoter/transactioncount.h"
#include "UiResource/uiresource.h"
#include "utils/int64.h"

#include <QMetaObject>
#include <QPainter>
#include <QPaintEvent>
#include <QResizeEvent>

#include <utility>

namespace TC {

using namespace detail;
using quoter::TransactionCount;

namespace {

struct Sector {
    int direction;
    int sizeClass;
    __int64 TransactionCount::*volume;
};

// In drawing order: the two sides meet at the small orders.
constexpr Sector kSectors[] = {
    {kActiveSell, 0, &TransactionCount::sellHuge},   {kActiveSell, 1, &TransactionCount::sellBig},
    {kActiveSell, 2, &TransactionCount::sellMiddle}, {kActiveSell, 3, &TransactionCount::sellSmall},
    {kActiveBuy, 3, &TransactionCount::buySmall},    {kActiveBuy, 2, &TransactionCount::buyMiddle},
    {kActiveBuy, 1, &TransactionCount::buyBig},      {kActiveBuy, 0, &TransactionCount::buyHuge},
};

int change(const TransactionCount& last, const TransactionCount& first, __int64 TransactionCount::*field)
{
    return difference32(low32(last.*field), low32(first.*field));
}

} // namespace

CWatchPlateWidget::CWatchPlateWidget(QWidget* parent)
    : CBaseWidget(QStringLiteral("zolv_CWatchPlateWidget"), false, parent)
{}

CWatchPlateWidget::~CWatchPlateWidget() = default;

void CWatchPlateWidget::setStock(const QString& key)
{
    m_stockKey = key;
    m_data.clear();
    if (key.isEmpty())
        requestUpdate();
}

void CWatchPlateWidget::setTransactionCount(const RecordList& records)
{
    if (const auto last = lastAs<TransactionCount>(records))
        take(*last, TransactionCount());
}

void CWatchPlateWidget::setRegionTransaction(const RecordList& records)
{
    if (records.empty())
        return;
    // One record is no range: its own state is set, and then, all the same, what lies between it and itself.
    if (records.size() == 1)
        setTransactionCount(records);
    const auto last = lastAs<TransactionCount>(records);
    const auto first = recordAs<TransactionCount>(records.front());
    if (last && first)
        take(*last, *first);
}

bool CWatchPlateWidget::handleEvent(int event, int first, int second, QString text, void* payload)
{
    return CBaseWidget::handleEvent(event, first, second, std::move(text), payload);
}

void CWatchPlateWidget::resizeLayout()
{
    update();
}

void CWatchPlateWidget::themeChanged()
{
    update();
}

void CWatchPlateWidget::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), ZP::CUiResource::getColor(plateGroundColorKey()));
    m_data.draw(painter, rect());
}

void CWatchPlateWidget::resizeEvent(QResizeEvent* event)
{
    CBaseWidget::resizeEvent(event);
    update();
}

void CWatchPlateWidget::take(const TransactionCount& last, const TransactionCount& first)
{
    std::vector<WatchPlateItem> items;
    items.reserve(std::size(kSectors));
    for (const Sector& sector : kSectors) {
        WatchPlateItem item;
        item.direction = sector.direction;
        item.sizeClass = sector.sizeClass;
        item.volume = change(last, first, sector.volume);
        items.push_back(std::move(item));
    }
    m_data.setItems(std::move(items));
    m_data.m_buyOrderCount = change(last, first, &TransactionCount::buyOrderCount);
    m_data.m_sellOrderCount = change(last, first, &TransactionCount::sellOrderCount);
    m_data.recalculate();
    requestUpdate();
}

// At once on the GUI thread, queued from any other.
void CWatchPlateWidget::requestUpdate()
{
    QMetaObject::invokeMethod(this, "update", Qt::AutoConnection);
}

} // namespace TC
