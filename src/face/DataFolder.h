#pragma once

#include <QString>

// The folder of the program's own data files (the landmark model, the help
// pages): share/bellavenor beside the bin/ folder of the running program, so
// the same rule holds in the build tree and in an installed tree.
QString applicationDataFolder();
