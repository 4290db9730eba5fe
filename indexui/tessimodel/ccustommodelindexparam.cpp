#include "indexui/tessimodel/ccustommodelindexparam.h"

#include "indexui/tessimodel/detail/batch.h"
#include "indexui/tessimodel/detail/colorkeys.h"
#include "indexui/tessimodel/detail/numbers.h"
#include "indexui/tessimodel/detail/numbertext.h"
#include "indexui/tessimodel/liveread.h"
#include "quoter/quoteralldata.h"
#include "UiResource/uiresource.h"

#include <algorithm>
#include <array>
#include <utility>

namespace TC {

using namespace detail;

namespace {

constexpr std::array kLabels{"最新指数", "今日开盘", "昨日收盘", "指数涨跌", "指数涨幅",
                             "指数振幅", "总成交量", "总成交额", "最高指数", "最低指数"};
constexpr int kRowCount = static_cast<int>(kLabels.size());

// A queued signal finds the type of its argument by this very name.
void registerRecordType()
{
    static const int type = qRegisterMetaType<quoter::QuoterBasePtr>("quoter::QuoterBasePtr");
    Q_UNUSED(type)
}

// What a snapshot puts into a row.
struct Shown {
    double value;
    QString (*textOf)(double);
    QColor color;
};

} // namespace

CCustomModelIndexParam::CCustomModelIndexParam()
{
    registerRecordType();
    reset();
    connect(this, SIGNAL(sigOnData(quoter::QuoterBasePtr)), this, SLOT(slotOnData(quoter::QuoterBasePtr)));
}

CCustomModelIndexParam::~CCustomModelIndexParam()
{
    clear();
    disconnect(this, SIGNAL(sigOnData(quoter::QuoterBasePtr)), this, SLOT(slotOnData(quoter::QuoterBasePtr)));
}

void CCustomModelIndexParam::reset()
{
    for (int id = 0; id < kRowCount; ++id) {
        SIndexParamRow row;
        row.label = QString::fromUtf8(kLabels[static_cast<std::size_t>(id)]);
        row.id = id;
        m_rows.append(row);
    }
}

void CCustomModelIndexParam::clear()
{
    for (int id = 0; id < std::min(kRowCount, m_rows.size()); ++id) {
        m_rows[id].value = kNoValue;
        m_rows[id].text.clear();
    }
}

void CCustomModelIndexParam::setStock(QString code)
{
    m_stockCode = std::move(code);
}

void CCustomModelIndexParam::onrequestId(qint64 id)
{
    m_requestId = id;
}

void CCustomModelIndexParam::request() {}

void CCustomModelIndexParam::unrequest() {}

void CCustomModelIndexParam::ondata(std::shared_ptr<quoter::QuoterBase> record)
{
    emit sigOnData(std::move(record));
}

QColor CCustomModelIndexParam::getParamColor(double value, double base, QColor normal) const
{
    if (isGreater(value, base))
        return ZP::CUiResource::getColor(riseColorKey());
    if (isLess(value, base))
        return ZP::CUiResource::getColor(fallColorKey());
    return normal;
}

void CCustomModelIndexParam::slotOnData(const quoter::QuoterBasePtr& record)
{
    if (const auto* const index = recordAs<quoter::QuoterAllData>(record.get())) {
        const QColor normal = ZP::CUiResource::getColor(plainColorKey());
        const double last = readLive(index->lastPrice);
        const double close = index->lastClose;
        const double change = last - close;
        const double rise = change / close;
        const double amplitude = (index->high - index->low) / index->high;
        const double volume = static_cast<double>(index->volume);
        const auto against = [&](double value, double base) { return getParamColor(value, base, normal); };
        // Four of the rules look odd and are wanted: the latest value has the colour of the open, the amplitude is a
        // bare fraction of the high, and both volume and amount have the colour of a price against the last close.
        const std::array<Shown, kLabels.size()> rows{{
            {last, plainText, against(index->open, close)},
            {index->open, plainText, against(index->open, close)},
            {close, plainText, normal},
            {change, plainText, against(change, 0)},
            {rise, ratioText, against(rise, 0)},
            {amplitude, plainText, normal},
            {volume, plainText, against(volume, close)},
            {index->amount, plainText, against(index->amount, close)},
            {index->high, plainText, against(index->high, close)},
            {index->low, plainText, against(index->low, close)},
        }};
        for (int id = 0; id < std::min(kRowCount, m_rows.size()); ++id) {
            const Shown& shown = rows[static_cast<std::size_t>(id)];
            m_rows[id].value = shown.value;
            m_rows[id].text = shown.textOf(shown.value);
            m_rows[id].color = shown.color;
        }
    }
    emit sigReDraw();
}

} // namespace TC
