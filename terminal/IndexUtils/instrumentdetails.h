#pragma once

#include "terminal_api.h"

#include <QString>

#include <memory>
#include <string>

namespace ztservice {
struct CInstrumentDetail;
}

// Short ways to an instrument's facts. Safe from any thread.
namespace TC {

// Market, code and terminal key. Asked only with an instrument, but for the keys, which are "" without one.
TERMINAL_API std::string getDetailMarket(const std::shared_ptr<ztservice::CInstrumentDetail>& stock);
TERMINAL_API std::string getDetailCode(const std::shared_ptr<ztservice::CInstrumentDetail>& stock);
TERMINAL_API std::string getDetailKey(const std::shared_ptr<ztservice::CInstrumentDetail>& stock);
TERMINAL_API QString getDetailQsMarket(const std::shared_ptr<ztservice::CInstrumentDetail>& stock);
TERMINAL_API QString getDetailQsCode(const std::shared_ptr<ztservice::CInstrumentDetail>& stock);
TERMINAL_API QString getDetailQsKey(const std::shared_ptr<ztservice::CInstrumentDetail>& stock);

// Last close, DBL_MAX for a null instrument.
TERMINAL_API double getDetailLastClose(const std::shared_ptr<ztservice::CInstrumentDetail>& stock);

// Minimum price step. Asked only with an instrument; a null one gives 0.001.
TERMINAL_API double getDetailPriceTick(const std::shared_ptr<ztservice::CInstrumentDetail>& stock);

} // namespace TC
