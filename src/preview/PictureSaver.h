#pragma once

#include <QDateTime>
#include <QImage>
#include <QString>

// The handshake between Save or Share and the preview: the shell sets
// b_Save_Picture and asks for a redraw; the redraw writes the retouched
// picture into s_Output_Folder, stores its path in s_Saved_Take_Picture and
// clears the flag, whether or not the write worked.
struct SaveRequest {
    bool b_Save_Picture = false;
    QString s_Output_Folder;
    QString s_Saved_Take_Picture;
};

// The file name of a picture rendered at `when`: the pattern
// "YYYY-MM-dd-HH-mm-ss" and ".png". "YYYY" is the week-based year, which
// around New Year can differ from the calendar year; kept as it is.
QString renderedPictureName(const QDateTime& when);

// Writes `picture` as PNG to `path` through a temporary file renamed into
// place, so a failed write leaves no half file. False when it failed.
bool writePng(const QImage& picture, const QString& path);

// Writes `picture` as PNG into `folder` under the name for `when`, through a
// temporary file renamed into place. Returns the path meant; a failed write
// is not reported.
QString writeRenderedPicture(const QImage& picture, const QString& folder, const QDateTime& when);

// Performs a pending save request with the composed picture.
void fulfil(SaveRequest& request, const QImage& composed);
