#pragma once

// Marks what the terminal's closed libraries export. The mark is needed on the importing side too: the
// library is built with hidden visibility, and a class without it would get hidden type information that
// a dynamic_cast of a delivered record could not be resolved against.
#define TERMINAL_API __attribute__((visibility("default")))
