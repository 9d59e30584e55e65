#pragma once

#include "EditingState.h"
#include "PhotoEdits.h"

#include <QJsonObject>
#include <QSize>
#include <QString>

#include <optional>

// Settings files: one key per EditingState field, under the field's own
// name. Colours are "#rrggbb" or "#rrggbbaa", or [r, g, b, a] with
// components 0 to 1 where 8 bits cannot hold them exactly; points are
// [x, y]. "version" says which version of the file's fields it holds: a file
// without one is of version 1, whose clicked spots were settings; since
// version 2 what was done on a photo is apart, under "photo", with the
// photo's name and size, and applies to that photo only.
inline constexpr int kSettingsVersion = 2;

// What was done on one photo, as a settings file keeps it.
struct PhotoEditsOf {
    QString name; // the photo's file name; empty when the file does not say
    QSize size;   // its pixels, upright
    PhotoEdits edits;

    bool belongsTo(const QString& photoPath, QSize photoSize) const;
};

// The fields of `state`, without a version.
QJsonObject toJson(EditingState state);

// Reads the keys present into `state`; a field left out keeps its value.
// An unknown key, a value of the wrong type or one outside the setting's
// range (kSettingRanges) is an error naming it, and for a file of a newer
// version the version too. What was done on a photo goes to `photo` when
// given (a version-1 file's spots without a photo's name), else is passed
// over.
bool readJson(const QJsonObject& json, EditingState& state, QString& error,
              std::optional<PhotoEditsOf>* photo = nullptr);

// Reads a settings file (a regular file of at most 1 MB holding one JSON
// object) into `state` and `photo`, which are left as they were when the
// file is refused.
bool readSettingsFile(const QString& path, EditingState& state, QString& error,
                      std::optional<PhotoEditsOf>* photo = nullptr);

// The settings a user carries to other photos, with the version: every
// field but the interaction modes and the colour picking, which belong to
// the window; with what was done on `photo` when given.
QJsonObject exportedSettings(const EditingState& state, const PhotoEditsOf* photo = nullptr);

// Writes them as a settings file that readSettingsFile reads back to the
// same values. An existing file is replaced whole or left as it was; the
// error names the path and the reason.
bool writeSettingsFile(const QString& path, const EditingState& state, QString& error,
                       const PhotoEditsOf* photo = nullptr);

// What a file's photo part left out when applied to another photo, or
// empty when it belongs to this one (or there is none).
QString leftOutFor(const std::optional<PhotoEditsOf>& photo, const QString& photoPath, QSize photoSize);
