#pragma once

#include "Alert.h"
#include "FaceChooser.h"

#include <QString>
#include <QUrl>

#include <functional>

class QWidget;

// The dialogs the window asks the person through and what it hands to the
// desktop, each a function so that tests answer in their place.
struct Dialogs {
    AlertPresenter showAlert;
    // A photo to open (empty: cancelled), starting in `startFolder`.
    std::function<QString(const QString& startFolder)> chooseFileToOpen;
    // Where a saved picture goes (empty: cancelled); the type chosen adds
    // its extension to a name without one.
    std::function<QString(const QString& suggestedPath)> chooseSavePath;
    // Where File → Export Settings… writes, and which settings file File →
    // Open Settings… reads (empty: cancelled).
    std::function<QString(const QString& suggestedPath)> chooseSettingsPath;
    std::function<QString(const QString& startFolder)> chooseSettingsToOpen;
    // The name Presets → Save as Preset… gives (empty: cancelled).
    std::function<QString()> askPresetName;
    // The face to take on a photo refused for its faces (none: cancelled).
    std::function<ChosenFaces(const FaceChoice& choice)> chooseFace;
    // The landmarks found in a frame drawn by hand, shown before the photo
    // opens on them: true to use them, false to draw again.
    std::function<bool(const OpenedPhoto& photo)> confirmDrawnFace;
    std::function<void(const QUrl& url)> openWithDefaultApplication;
    std::function<void(int status)> endProcess;

    // The real dialogs, over the window `parent` gives when they open.
    static Dialogs over(std::function<QWidget*()> parent);
};
