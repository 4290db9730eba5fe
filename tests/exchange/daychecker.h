#pragma once

namespace recording {
struct RecordedDay;
}

// Holds a day with all eight streams, up to the close, against a plain replay of its ticks: each snapshot record must
// say what the ticks before it make, and the phases must follow one another. Faults fail the test that runs.
void checkDay(const recording::RecordedDay& day);
