#pragma once

#include "BackgroundJob.h"
#include "Compositor.h"
#include "Document.h"
#include "RetouchedFile.h"
#include "ViewProxy.h"

#include <QObject>
#include <QTimer>

#include <optional>

// The pictures of one document as a view shows them, without widgets: on a
// large photo a change is first composed as an interactive frame of what the
// view shows (ViewProxy.h), at once; when changes have rested for the settle
// delay the full picture is composed on another thread and replaces it. A
// change during that composition is composed after it; a new photo or a
// save waits for it. Whoever shows the pictures asks for them when it
// draws and is told when a full one is ready.
class RenderSession : public QObject {
    Q_OBJECT

public:
    // How long changes must rest before the full picture is composed.
    static constexpr int kSettleDelay = 200; // ms

    explicit RenderSession(const Document& document, QObject* parent = nullptr);
    ~RenderSession() override;

    void setSettleDelay(int milliseconds) { settleTimer_.setInterval(milliseconds); }

    // A picture to show and the part of the photo it covers (photo pixels).
    struct Shown {
        const QImage* picture = nullptr;
        QRectF part;
    };
    // The picture for a view showing `frame` of the photo: the full picture
    // when it is up to date or a frame would not pay (a small photo, a view
    // showing most of it at full size); otherwise the frame, with the full
    // picture to follow. Null when it could not be made, for `failure`.
    Shown pictureFor(const ProxyFrame& frame, QString& failure);

    // The full picture of the edit as it is now, composed here if need be.
    const QImage* fullPicture(QString& failure);
    // The same written to a file, by the program's one render path.
    WriteFailure writeFull(const QString& path, const PictureEncoding& encoding);

    // Whether the full picture of the current edit is there, and whether
    // one is being composed.
    bool settled() const;
    bool composingFull() const { return fullJob_.running(); }
    // The full pictures' compositor (not to be read while one is composed)
    // and the frames'.
    const Compositor& compositor() const { return compositor_; }
    const Compositor& frameCompositor() const { return frameCompositor_; }

signals:
    // A full picture composed on another thread is ready to be shown.
    void fullPictureReady();

private:
    void photoReplaced();
    const QImage* upToDateFrame(const ProxyFrame& frame, QString& failure);
    void startFullComposition();
    void fullCompositionDone(const QString& failure);

    const Document& document_;
    Compositor compositor_;
    // The revisions of the document the full picture and the frame show,
    // the one being composed and one whose composition ran out of memory.
    std::optional<quint64> composed_, composing_, failed_, framed_;
    BackgroundJob fullJob_;
    QTimer settleTimer_;
    // The interactive frame: the photo reduced to it, and its compositor.
    struct Proxy {
        ProxyFrame frame;
        OpenedPhoto photo;
    };
    std::optional<Proxy> proxy_;
    Compositor frameCompositor_;
};
