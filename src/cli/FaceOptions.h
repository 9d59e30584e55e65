#pragma once

#include "OpenedPhoto.h"

#include <QSize>
#include <QString>
#include <QStringList>

// --face N and --face-box X,Y,W,H, taken by analyse and render: which face
// of a group photo, or where the face is on a photo the detector misses.

// Takes the face options out of `arguments`. False, with what is wrong
// naming the option and what it allows, when they cannot be used.
bool takeFaceOptions(QStringList& arguments, FacePick& pick, QString& error);

// Why the face asked for is not on the photo (a face number beyond those
// found, a box outside the photo), naming the option and its range.
QString noSuchFaceMessage(const FacePick& pick, int facesFound, QSize photo);
