#pragma once

#include "OpenedPhoto.h"

#include <QSize>
#include <QString>
#include <QStringList>

// --face N, --face-box X,Y,W,H and --all-faces, taken by analyse and
// render: which face of a group photo (or every face), or where the face is
// on a photo the detector misses.

// Takes the face options out of `arguments`. False, with what is wrong
// naming the option and what it allows, when they cannot be used.
bool takeFaceOptions(QStringList& arguments, FacePick& pick, QString& error);

// Why the face asked for is not on the photo (a face number beyond those
// found, a box outside the photo), naming the option and its range.
QString noSuchFaceMessage(const FacePick& pick, int facesFound, QSize photo);

// A photo of several faces refused without a face option: how many, and
// how to choose.
QString severalFacesMessage(int facesFound);
