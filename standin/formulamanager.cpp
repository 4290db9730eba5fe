#include "Formula/formulamanager.h"

#include "utils/csingletont_impl.h"

template struct utils::CSingletonT<TC::CFormulaManager>;

namespace TC {

CFormulaManager::CFormulaManager() = default;
CFormulaManager::~CFormulaManager() = default;

} // namespace TC
