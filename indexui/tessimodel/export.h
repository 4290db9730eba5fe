#pragma once

// Marks what the library gives to panels; everything else is hidden in the built library.
#define TESSIMODEL_EXPORT __attribute__((visibility("default")))
