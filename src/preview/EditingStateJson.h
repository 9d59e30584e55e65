#pragma once

#include "EditingState.h"

#include <QJsonObject>
#include <QString>

// Settings files of the command-line tool: one key per EditingState field,
// under the field's own name. Colours are "#rrggbb" or "#rrggbbaa", points
// [x, y].
QJsonObject toJson(EditingState state);

// Reads the keys present into `state`; a field left out keeps its value.
// An unknown key or a value of the wrong type is an error naming it.
bool readJson(const QJsonObject& json, EditingState& state, QString& error);
