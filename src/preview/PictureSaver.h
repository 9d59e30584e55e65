#pragma once

#include <QDateTime>
#include <QImage>
#include <QString>

// The handshake between Save or Share and the preview: the shell sets
// b_Save_Picture and asks for a redraw; the redraw writes the retouched
// picture into s_Output_Folder, stores its path in s_Saved_Take_Picture and
// clears the flag. When the picture could not be made or written, `failure`
// says why and names the path; the shell must then not report success.
struct SaveRequest {
    bool b_Save_Picture = false;
    QString s_Output_Folder;
    QString s_Saved_Take_Picture;
    QString failure;
};

// The file name of a picture rendered at `when`: the pattern
// "YYYY-MM-dd-HH-mm-ss" and ".png". "YYYY" is the week-based year, which
// around New Year can differ from the calendar year; kept as it is.
QString renderedPictureName(const QDateTime& when);

// Writes `picture` as PNG to `path` through a temporary file renamed into
// place, so a failed write leaves no half file and an existing file
// untouched. Returns why it failed, or an empty string.
QString writePng(const QImage& picture, const QString& path);

// Performs a pending save request: `composed` is the retouched picture, or
// null when it could not be made, for the reason `composeFailure`.
void fulfil(SaveRequest& request, const QImage* composed, const QString& composeFailure = {});

// Moves the file `from` to `to`, replacing what is there in one step: on
// the same file system by a rename over it; on another by a copy into a
// temporary file beside `to`, flushed to disk, then renamed over it. Either
// the whole new file is at `to` and `from` is gone, or nothing changed at
// either place. Returns why it failed, or an empty string.
QString moveReplacing(const QString& from, const QString& to);
