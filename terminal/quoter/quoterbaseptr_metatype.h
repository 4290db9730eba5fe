#pragma once

#include "quoter/quoterbase.h"

#include <QMetaType>

// For signals that carry a record from thread to thread. Who connects such a signal registers the type under this
// name first.
Q_DECLARE_METATYPE(quoter::QuoterBasePtr)
