#include "Formula/formulamanager.h"

#include "quoter/quoterbaseptr_metatype.h"
#include "utils/csingletont_impl.h"

template struct utils::CSingletonT<TC::CFormulaManager>;

namespace TC {

namespace {

// At start-up, before any queued connection.
[[maybe_unused]] const int quoterBasePtrType = qRegisterMetaType<quoter::QuoterBasePtr>("quoter::QuoterBasePtr");

} // namespace

CFormulaManager::CFormulaManager() = default;
CFormulaManager::~CFormulaManager() = default;

} // namespace TC
