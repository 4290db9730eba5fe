#pragma once

// What a Terminal calls, once as it begins and once as it ends.
namespace standin {

void resetStrands();
void resetInstruments();
void resetAnswers();

// The log is there, empty and on at INFO.
void startLog();

// g_ZTStdLogger is null.
void endLog();

} // namespace standin
