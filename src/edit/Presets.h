#pragma once

#include <QString>
#include <QStringList>

// Presets: named settings files in the user's data folder, one file per
// preset (NAME.json, as Export Settings… writes it), shared by the window
// and the command-line tool.

// The window's AppDataLocation/presets (~/.local/share/Bellavenor/presets),
// whichever program asks.
QString defaultPresetsFolder();

// The names of the presets in `folder`, sorted as a person reads them.
QStringList presetNames(const QString& folder);

// The file of the preset `name`; empty, with `error` saying why, when the
// name cannot name a file of its own (empty, too long, a folder in it).
QString presetPath(const QString& folder, const QString& name, QString& error);
