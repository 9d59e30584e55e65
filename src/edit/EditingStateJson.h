#pragma once

#include "EditingState.h"

#include <QJsonObject>
#include <QString>

// Settings files of the command-line tool: one key per EditingState field,
// under the field's own name. Colours are "#rrggbb" or "#rrggbbaa", or
// [r, g, b, a] with components 0 to 1 where 8 bits cannot hold them
// exactly; points are [x, y].
QJsonObject toJson(EditingState state);

// Reads the keys present into `state`; a field left out keeps its value.
// An unknown key, a value of the wrong type or one outside the setting's
// range (kSettingRanges) is an error naming it.
bool readJson(const QJsonObject& json, EditingState& state, QString& error);

// Reads a settings file (a regular file of at most 1 MB holding one JSON
// object) into `state`, which is left as it was when the file is refused.
bool readSettingsFile(const QString& path, EditingState& state, QString& error);

// The settings a user carries to other photos: every field but the
// interaction modes and the colour picking, which belong to the window.
QJsonObject exportedSettings(const EditingState& state);

// Writes them as a settings file that readSettingsFile reads back to the
// same values. An existing file is replaced whole or left as it was; the
// error names the path and the reason.
bool writeSettingsFile(const QString& path, const EditingState& state, QString& error);
