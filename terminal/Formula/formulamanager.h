#pragma once

#include "terminal_api.h"
#include "utils/csingletont.h"

#include <QObject>
#include <QString>

namespace TC {

// The terminal's data hub. Reached by utils::CSingletonT<CFormulaManager>; lives on the thread that first asked
// for it.
class TERMINAL_API CFormulaManager : public QObject {
    Q_OBJECT

public:
    CFormulaManager();
    ~CFormulaManager() override;

signals:
    // Trading data changed (a new day, a reconnect): what was cached is no longer true. The text says what
    // changed, for logs. Emitted from any thread.
    void sigTradeDataChange(QString what);
};

} // namespace TC

namespace utils {
extern template struct TERMINAL_API CSingletonT<TC::CFormulaManager>;
} // namespace utils
