#include "SaveAndShare.h"

#include "Window_Share.h"

#include <QDir>
#include <QFile>

SaveAndShare::SaveAndShare(Document& document, RenderSession& session, Dialogs& dialogs,
                           const LocalisedLabels& labels, QWidget* window)
    : document_(document)
    , session_(session)
    , dialogs_(dialogs)
    , labels_(labels)
    , window_(window)
{
}

// The render is the next redraw's work: it comes once the event loop turns.
void SaveAndShare::requestRender()
{
    b_Save_Picture = true;
    QTimer::singleShot(0, this, &SaveAndShare::render);
}

void SaveAndShare::render()
{
    if (!b_Save_Picture)
        return;
    s_Saved_Take_Picture.clear();
    const QString path = QDir(s_Output_Folder).filePath(renderedPictureName(QDateTime::currentDateTime()));
    s_Saved_Take_Picture = path;
    renderedPhoto_ = document_.photo();
    rendered_ = document_.edit();
    renderedRevision_ = document_.revision();
    const WriteFailure written = session_.writeFull(path, {});
    if (!written.composing.isEmpty())
        failure = QString("The picture could not be rendered: %1").arg(written.composing);
    else if (!written.writing.isEmpty())
        failure = QString("The picture could not be written to \"%1\": %2").arg(QDir::toNativeSeparators(path),
                                                                                written.writing);
    else
        failure.clear();
    b_Save_Picture = false;
}

QTimer* SaveAndShare::startPolling(int milliseconds, void (SaveAndShare::*routine)())
{
    auto* timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, routine);
    timer->start(milliseconds);
    return timer;
}

void SaveAndShare::OnToolbarSave()
{
    if (!document_.isOpen())
        return;
    requestRender();
    // An earlier save timer is not cancelled: it keeps polling, as it always
    // has in this program.
    timer_Save_Picture = startPolling(2000, &SaveAndShare::Timer_Save_Picture_Routine);
}

// A PNG is moved; another format is written from what the PNG was made of,
// by the same render path, and the PNG goes once it is there. Either way the
// chosen file is replaced in one step or not at all.
QString SaveAndShare::moveToChosen(const QString& chosen)
{
    const std::optional<PictureFormat> format = pictureFormatOf(chosen);
    if (!format || *format == PictureFormat::Png)
        return moveReplacing(s_Saved_Take_Picture, chosen);
    WriteFailure written;
    if (renderedRevision_ == document_.revision() && renderedPhoto_ == document_.photo()) {
        written = session_.writeFull(chosen, {*format});
    } else {
        Compositor compositor(Compositor::Once);
        written = writeRetouched(compositor, *renderedPhoto_, rendered_.photoEdits, rendered_.state, chosen, {*format});
    }
    if (written.any())
        return written.composing.isEmpty() ? written.writing : written.composing;
    QFile::remove(s_Saved_Take_Picture);
    return {};
}

void SaveAndShare::Timer_Save_Picture_Routine()
{
    if (b_Save_Picture)
        return;
    if (timer_Save_Picture) { // only the latest timer stops
        timer_Save_Picture->stop();
        timer_Save_Picture->deleteLater();
    }
    if (reportedRenderFailure())
        return;
    const QString rendered = s_Saved_Take_Picture;
    const QString chosen = dialogs_.chooseSavePath(rendered);
    if (chosen.isEmpty())
        return; // the picture stays in the working folder
    // The dialog has asked before replacing.
    if (const QString reason = moveToChosen(chosen); !reason.isEmpty()) {
        dialogs_.showAlert({"Error",
                            QString("The picture could not be saved to \"%1\": %2. It is still in the working folder: \"%3\".")
                                .arg(QDir::toNativeSeparators(chosen), reason, QDir::toNativeSeparators(rendered)),
                            {"Close"}});
        return;
    }
    if (dialogs_.showAlert({"Success", "Image file saved successfully.", {"View Image File", "Close"}}) == 0)
        dialogs_.openWithDefaultApplication(QUrl::fromLocalFile(chosen));
}

// A render that failed (full disk, no memory) is said so, instead of
// offering a file that is not there.
bool SaveAndShare::reportedRenderFailure()
{
    if (failure.isEmpty())
        return false;
    dialogs_.showAlert({"Error", failure, {"Close"}});
    return true;
}

void SaveAndShare::OnToolbarShare()
{
    if (!document_.isOpen())
        return;
    requestRender();
    if (timer_Share_Picture) {
        timer_Share_Picture->stop();
        timer_Share_Picture->deleteLater();
    }
    timer_Share_Picture = startPolling(1000, &SaveAndShare::Timer_Share_Picture_Routine);
}

void SaveAndShare::Timer_Share_Picture_Routine()
{
    if (b_Save_Picture)
        return;
    if (timer_Share_Picture) {
        timer_Share_Picture->stop();
        timer_Share_Picture->deleteLater();
    }
    if (reportedRenderFailure())
        return;
    auto* sheet = new Window_Share(
        labels_, [this] { return s_Saved_Take_Picture; }, [this] { Close_Share_Window(); }, window_);
    windowShare = sheet;
    sheet->show();
}

void SaveAndShare::Close_Share_Window()
{
    if (windowShare)
        windowShare->close();
    windowShare = nullptr;
}
