#pragma once

#include "quoter/quoterbase.h"

#include <QMetaType>

// For signals that carry a record from thread to thread. The terminal registers the type under this name at
// start-up, before the first queued connection.
Q_DECLARE_METATYPE(quoter::QuoterBasePtr)
