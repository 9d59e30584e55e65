#pragma once

#include "EditingState.h"
#include "PictureSaver.h"

#include <QString>
#include <QStringList>

// bellavenor-cli render PHOTO... -o FOLDER/: one look on a whole shoot in one
// process. The model is read once; two threads each take a photo whole, so
// both cores stay busy and at most two photos are in memory at once.
struct BatchOptions {
    QStringList inputs; // photos and folders
    QString outputFolder;
    PictureEncoding encoding;
    EditingState state;
    bool recursive = false;
    bool overwrite = false;
    bool quiet = false;
    bool oneAtATime = false; // one thread: for measuring what the second gains
    QString report;          // a JSON file with one entry per photo, when given
    bool largestFace = false; // a group photo is retouched on its largest face
    bool allFaces = false;    // or on every face
};

// The pictures Bellavenor reads among `inputs`: files as given, folders'
// pictures by extension (their subfolders too when `recursive`, but not
// `outputFolder`), in name order.
QStringList photosIn(const QStringList& inputs, bool recursive, const QString& outputFolder);

// Renders every photo into the output folder as BASENAME.EXT of the chosen
// format; an existing output is kept (unless `overwrite`), a refused photo
// is reported and skipped. Returns the exit status: 0 when every photo has
// its picture, kCliSomeRefused when some were refused, kCliInterrupted after
// Ctrl+C (the photos in flight are written whole first).
int runBatch(const BatchOptions& options);
