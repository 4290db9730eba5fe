#pragma once

#include "tests/tessimodel/oracle/streams.h"

#include <rapidcheck.h>

namespace tests::oracle {

// A stream of that many steps: mostly an opened session in continuous trading, with everything that can go wrong mixed
// in. The same seed gives the same stream.
Stream makeStream(unsigned long long seed, int steps);

// Streams that shrink by steps and by records of a batch.
rc::Gen<Stream> streams(int steps);

} // namespace tests::oracle
