#pragma once

#include "terminal_api.h"
#include "utils/csingletont.h"

#include <memory>
#include <string>

class QString;

namespace ztservice {
struct CInstrumentDetail;
}

namespace TC {

// The terminal's instrument service. Reached by utils::CSingletonT<CStockManager>. Safe from any thread.
class TERMINAL_API CStockManager {
public:
    // The instrument of a terminal key, or of a market and code; null when unknown.
    std::shared_ptr<ztservice::CInstrumentDetail> getInstrumentDetail(const QString& key) const;
    std::shared_ptr<ztservice::CInstrumentDetail> getInstrumentDetail(const std::string& market,
                                                                      const std::string& code) const;

    // 00:00:00 of the market's last trading day, today included, in seconds since the epoch. A market that is not
    // known has the mainland's.
    int getLastTradingDay(const QString& market) const;

    // Whether the instrument is open to trading through Shanghai-Hong Kong or Shenzhen-Hong Kong Connect.
    bool hasHGT(const std::string& market, const std::string& code) const;
    bool hasSGT(const std::string& market, const std::string& code) const;

    // Code of the instrument's depositary receipt on market "LSE", "" for none.
    std::string getGDRCode(const std::string& code) const;

    // Last close as of `date`, which is counted as getLastTradingDay counts; DBL_MAX when it is not known.
    double getCurrentDateLastClose(const QString& key, int date) const;
    double getCurrentDateLastClose(const std::shared_ptr<ztservice::CInstrumentDetail>& stock, int date) const;
};

} // namespace TC

namespace utils {
extern template struct TERMINAL_API CSingletonT<TC::CStockManager>;
} // namespace utils
