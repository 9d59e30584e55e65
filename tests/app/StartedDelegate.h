#pragma once

#include "AppDelegate.h"
#include "EnglishLabels.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

// An application whose settings and presets live in a temporary folder and
// whose alerts are recorded (and answered with `alertAnswer`) instead of
// shown; started for each test by StartedDelegateTest.
class DelegateTest : public ::testing::Test {
protected:
    std::unique_ptr<AppDelegate> made(const QString& documentsFolder)
    {
        installEnglishLabelsOnce();
        auto delegate = std::make_unique<AppDelegate>(documentsFolder);
        delegate->settingsFile = documents.filePath("bellavenor.conf");
        delegate->presetsFolder = documents.filePath("presets");
        delegate->dialogs.showAlert = [this](const Alert& alert) {
            alerts.push_back(alert);
            return alertAnswer;
        };
        delegate->dialogs.endProcess = [](int) {};
        delegate->dialogs.confirmDrawnFace = [](const OpenedPhoto&) { return true; };
        delegate->dialogs.openWithDefaultApplication = [](const QUrl&) {};
        return delegate;
    }

    QTemporaryDir documents;
    std::vector<Alert> alerts;
    int alertAnswer = 0;
};

class StartedDelegateTest : public DelegateTest {
protected:
    void SetUp() override
    {
        app = made(documents.path());
        ASSERT_TRUE(app->applicationDidFinishLaunching());
    }

    // Opens `path` through the Open action, the dialog answered with it.
    void open(const QString& path)
    {
        app->dialogs.chooseFileToOpen = [path](const QString&) { return path; };
        app->OnToolbarOpen();
    }

    static QString portraitPath() { return QString(BELLAVENOR_TEST_DATA) + "/portrait.png"; }

    std::unique_ptr<AppDelegate> app;
};
