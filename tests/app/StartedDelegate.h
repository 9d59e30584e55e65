#pragma once

#include "AppDelegate.h"
#include "EnglishLabels.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

// A started application in a temporary Documents folder whose alerts are
// recorded (and answered with `alertAnswer`) instead of shown.
class StartedDelegateTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        installEnglishLabelsOnce();
        app = std::make_unique<AppDelegate>(documents.path());
        app->settingsFile = documents.filePath("bellavenor.conf");
        app->presetsFolder = documents.filePath("presets");
        app->dialogs.showAlert = [this](const Alert& alert) {
            alerts.push_back(alert);
            return alertAnswer;
        };
        app->dialogs.endProcess = [](int) {};
        app->dialogs.openWithDefaultApplication = [](const QUrl&) {};
        ASSERT_TRUE(app->applicationDidFinishLaunching());
    }

    // Opens `path` through the Open action, the dialog answered with it.
    void open(const QString& path)
    {
        app->dialogs.chooseFileToOpen = [path](const QString&) { return path; };
        app->OnToolbarOpen();
    }

    static QString portraitPath() { return QString(BELLAVENOR_TEST_DATA) + "/portrait.png"; }

    QTemporaryDir documents;
    std::unique_ptr<AppDelegate> app;
    std::vector<Alert> alerts;
    int alertAnswer = 0;
};
