#pragma once

namespace TC {

// What the flag word of a book model tells a panel about the rows since its last read; the values add up.
inline constexpr int kUpdateRebuilt = 1;      // the book was rebuilt, or the model cleared
inline constexpr int kUpdateLevels = 2;       // a level appeared or disappeared
inline constexpr int kUpdateInPlace = 4;      // a level changed in place
inline constexpr int kForeignInstrument = 16; // a tick of another instrument; passes between book and model only

} // namespace TC
