#pragma once

#include "Dialogs.h"
#include "LocalisedLabels.h"
#include "RenderSession.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

// Save and Share: the shell asks for the retouched picture as a dated PNG in
// the working folder (b_Save_Picture set, the picture rendered on the next
// turn of the event loop, the flag cleared once it is written), waits for it
// with a polling timer, then moves it where the person chooses (Save) or
// offers it to the desktop's share targets (Share).
class SaveAndShare : public QObject {
    Q_OBJECT

public:
    SaveAndShare(Document& document, RenderSession& session, Dialogs& dialogs, const LocalisedLabels& labels,
                 QWidget* window);

    bool b_Save_Picture = false;
    QString s_Output_Folder;
    QString s_Saved_Take_Picture;
    // Why the last render failed, naming the path; empty when it was written.
    QString failure;
    // The polling timers of Save and Share (the latest of each).
    QPointer<QTimer> timer_Save_Picture;
    QPointer<QTimer> timer_Share_Picture;
    QPointer<QWidget> windowShare;

    void OnToolbarSave();
    void Timer_Save_Picture_Routine();
    void OnToolbarShare();
    void Timer_Share_Picture_Routine();
    void Close_Share_Window();

private:
    void requestRender();
    void render();
    bool reportedRenderFailure();
    QString moveToChosen(const QString& chosen);
    QTimer* startPolling(int milliseconds, void (SaveAndShare::*routine)());

    Document& document_;
    RenderSession& session_;
    Dialogs& dialogs_;
    const LocalisedLabels& labels_;
    QWidget* window_;
    // What the rendered picture was made of, for a Save into another format.
    std::shared_ptr<const OpenedPhoto> renderedPhoto_;
    Edit rendered_;
    quint64 renderedRevision_ = 0;
};
