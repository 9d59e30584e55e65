#pragma once

#include <QStringList>

// Exit statuses of bellavenor-cli.
enum CliStatus : int {
    kCliOk = 0,
    kCliNoFace = 1,
    kCliSeveralFaces = 2,
    kCliUnreadable = 3,
    kCliSomeRefused = 5, // a batch rendered what it could; the report says why not the rest
    kCliInterrupted = 130, // Ctrl+C: the photos in flight were written whole, the rest not started
    kCliUsage = 64,
};

// bellavenor-cli analyse PHOTO: the face analysis of one photo as JSON on
// stdout; a one-line message on stderr when there is none.
int runAnalyse(const QStringList& arguments);

// bellavenor-cli render PHOTO [--settings FILE.json] -o OUT.png [--timings]:
// the retouched photo at full size, with the settings of the file (every
// field left out at its default).
int runRender(const QStringList& arguments);

// bellavenor-cli settings: the default settings as JSON.
int runSettings();
