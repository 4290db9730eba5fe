#include "exchange/instrument.h"

#include "exchange/instrumentclass.h"
#include "exchange/simulationoptions.h"

#include <algorithm>
#include <cmath>

namespace exchange {

namespace {

constexpr int kTotalSharesField = 3015;
constexpr int kFloatSharesField = 3016;
constexpr int kPreviousSettlementField = 3002;

// Of a depositary receipt.
constexpr int kReceiptsField = 2008;
constexpr int kSharesField = 2009;
constexpr int kCloseField = 3002;
constexpr int kRateField = 3011;

Ticks lastCloseOf(const SimulationOptions& options, const InstrumentClass& row)
{
    return static_cast<Ticks>(std::lround(options.lastClose * row.tick.perUnit));
}

// In cents of the receipt's currency.
Ticks receiptClose(const Receipt& receipt, TickSize tick, Ticks lastClose)
{
    constexpr int kPremium = 3; // per cent
    constexpr int kCents = 100;
    const __int64 numerator = static_cast<__int64>(lastClose) * receipt.shares * kCents * (100 + kPremium);
    const __int64 denominator = static_cast<__int64>(tick.perUnit) * receipt.receipts * receipt.rate;
    return static_cast<Ticks>(numerator / denominator);
}

} // namespace

Ticks previousSettlement(const SimulationOptions& options, const InstrumentClass& row)
{
    constexpr int kAwayByOneIn = 300;
    const Ticks lastClose = lastCloseOf(options, row);
    return lastClose + std::max(lastClose / kAwayByOneIn, 1);
}

PriceBand bandOf(const SimulationOptions& options, const InstrumentClass& row)
{
    const Ticks lastClose = lastCloseOf(options, row);
    PriceBand band = PriceBand::around(row.settles ? previousSettlement(options, row) : lastClose, row.bandPercent);
    band.lastClose = lastClose;
    return band;
}

standin::InstrumentDescription describe(const SimulationOptions& options, const InstrumentClass& row)
{
    const PriceBand band = bandOf(options, row);
    standin::InstrumentDescription instrument;
    instrument.market = row.market;
    instrument.code = options.code;
    instrument.name = options.name;
    instrument.lastClose = row.tick.price(band.lastClose);
    if (row.hasPriceLimits) {
        instrument.upStopPrice = row.tick.price(band.high);
        instrument.downStopPrice = row.tick.price(band.low);
    }
    instrument.priceTick = row.tick.price(1);
    instrument.classBits = row.classBits;
    instrument.listingFlags = row.listingFlags;
    instrument.types = row.types;
    instrument.isIndex = row.isIndex;
    instrument.gdrCode = row.receipt ? row.receipt->code : "";
    instrument.intFields = row.intFields;
    instrument.doubleFields = row.doubleFields;
    if (row.hasShares) {
        instrument.doubleFields[kTotalSharesField] = static_cast<double>(options.totalShares);
        instrument.doubleFields[kFloatSharesField] = static_cast<double>(options.floatShares);
    }
    if (row.settles)
        instrument.doubleFields[kPreviousSettlementField] = row.tick.price(previousSettlement(options, row));
    return instrument;
}

std::vector<standin::InstrumentDescription> related(const SimulationOptions& options, const InstrumentClass& row)
{
    if (!row.receipt)
        return {};
    constexpr TickSize kCent{100};
    standin::InstrumentDescription receipt;
    receipt.market = "LSE";
    receipt.code = row.receipt->code;
    receipt.name = row.receipt->name;
    receipt.priceTick = kCent.price(1);
    receipt.lastClose = kCent.price(receiptClose(*row.receipt, row.tick, lastCloseOf(options, row)));
    receipt.intFields = {{kReceiptsField, row.receipt->receipts}, {kSharesField, row.receipt->shares}};
    receipt.doubleFields = {{kCloseField, receipt.lastClose}, {kRateField, static_cast<double>(row.receipt->rate)}};
    return {receipt};
}

} // namespace exchange
