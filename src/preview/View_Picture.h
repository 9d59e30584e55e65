#pragma once

#include "BackgroundJob.h"
#include "Compositor.h"
#include "EditingState.h"
#include "PreviewGeometry.h"
#include "Reshaping.h"
#include "ViewProxy.h"

#include <QRectF>
#include <QTimer>
#include <QWidget>

#include <array>
#include <functional>
#include <memory>
#include <optional>

struct OpenedPhoto;
struct SaveRequest;

// The preview of the main window: the retouched picture, composed at the
// photo's full size whenever what it is made of changed, shown fitted into
// the view or zoomed; black without a photo. A pending save request is
// fulfilled by the same redraw. The untouched photo can be shown instead of
// it, or beside it in a split view, without composing anything.
//
// On a large photo a change first shows an interactive frame (ViewProxy.h)
// composed at once; when changes have rested for kSettleDelay the full
// picture is composed on another thread and replaces it. The window keeps
// answering meanwhile; a change during that composition is composed after
// it, and a save waits for it and composes in full.
class View_Picture : public QWidget {
    Q_OBJECT

public:
    explicit View_Picture(QWidget* parent = nullptr);
    ~View_Picture() override;

    // How long changes must rest before the full picture is composed.
    static constexpr int kSettleDelay = 200; // ms
    void setSettleDelay(int milliseconds) { settleTimer_.setInterval(milliseconds); }

    // What to show and what the mouse edits, read at every redraw: the open
    // photo (shared, never changed) and, owned by the application, what the
    // user reshaped, the settings and the save request.
    void setSources(std::shared_ptr<const OpenedPhoto> photo, Reshaping* reshaping, EditingState* state,
                    SaveRequest* saveRequest);

    // Called after a cheek colour was picked from the photo, with its index
    // (1 left outer, 2 make-up, 3 right outer), and when the pointer should
    // look regular again.
    std::function<void(int index)> onColourPicked;
    std::function<void()> Change_Cursor_To_Regular;
    // Called when the left button is let go, after whatever it dragged.
    std::function<void()> onLeftReleased;

    // Which handles a gesture holds: the four corners (left-bottom,
    // right-bottom, right-up, left-up) and the whole area of each cheek, and
    // the six under-eye points of each side.
    struct Dragging {
        bool LB = false, RB = false, RU = false, LU = false, Crop = false;
        std::array<bool, 6> point{};
    };
    Dragging draggingLeft, draggingRight;
    bool b_Mouse_Down = false;
    QPointF mouseDownPos, mouseDownPos_Mouse_Down; // view space, y up
    QRectF rect_Cheek_Left_Area_To_Paint_Mouse_Down, rect_Cheek_Right_Area_To_Paint_Mouse_Down;

    // Where the photo is drawn, in view coordinates with the origin at the
    // bottom-left: the best-fit frame unless zoomed. Every pointer position
    // is mapped to the photo through it.
    QRectF rectDrawCamera() const;

    // Zoom and pan: fitted (Ctrl+0), 100 % (Ctrl+1: one photo pixel per
    // device pixel), a level up or down about the view's centre, or about a
    // point of the view (the wheel with Ctrl); panning by view pixels.
    const Framing& framing() const { return framing_; }
    double zoom() const; // device pixels per photo pixel, as shown
    void zoomToFit();
    void zoomToActualPixels();
    void zoomBy(int steps);
    void zoomBy(int steps, QPointF anchor);
    void panBy(QPointF delta);

    // Before and after: while held the untouched photo is shown in the same
    // frame; the split view shows it in the left half of the frame and the
    // retouched picture in the right half.
    void setShowingUntouched(bool untouched);
    bool showingUntouched() const { return showingUntouched_; }
    void setSplitView(bool split);
    bool splitView() const { return splitView_; }
    // While the pan key is held, the left button pans too.
    void setPanKeyHeld(bool held);

    // The compositor of the full pictures: its last picture and how many
    // it made. Not to be read while a full picture is being composed.
    const Compositor& compositor() const { return compositor_; }
    // Whether what is shown is the full picture of the current settings, or
    // an interactive frame still waiting for it.
    bool settled() const;
    bool composingFull() const { return fullJob_.running(); }
    // The frame's compositor and picture, while one is shown.
    const Compositor& frameCompositor() const { return frameCompositor_; }

signals:
    // The frame or the zoom changed: what the status line shows.
    void framingChanged();
    void splitViewChanged(bool split);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    // A picture to show and the part of the photo it covers (photo pixels).
    struct Shown {
        const QImage* picture = nullptr;
        QRectF part;
    };
    Shown pictureToShow(bool needFull, QString& failure);
    const QImage* upToDateWorking(QString& failure);
    const QImage* upToDateFrame(const ProxyFrame& frame, QString& failure);
    ProxyFrame frameInView() const;
    void startFullComposition();
    void fullCompositionDone(const QString& failure);
    void waitForFullComposition();
    void showFramed(const Shown& working);
    void convertToScreen(const QRectF& onScreen);
    void setFraming(const Framing& framing);
    QSizeF photoSize() const;
    bool panning(const QMouseEvent* event) const;
    QPointF viewPoint(const QMouseEvent* event) const;
    QPointF percentOfPhoto(QPointF view) const;
    QPointF pixelOf(QPointF percent) const;
    void hitCheekHandles(QPointF percent, Dragging& flags, const std::array<QPointF, 4>& corners);
    // Each moves what the gesture holds and says whether anything moved.
    bool dragCheeks(QPointF pixel);
    bool dragUnderEyePoints(QPointF pixel);
    void pickColour(QPointF percent);
    bool hasPhoto() const;
    bool repositioning() const;

    std::shared_ptr<const OpenedPhoto> photo_;
    Reshaping* reshaping_ = nullptr;
    EditingState* state_ = nullptr;
    SaveRequest* saveRequest_ = nullptr;
    Compositor compositor_;
    // What the compositor's picture was made of: while they stay the same,
    // a redraw (a zoom, a pan, the compare key) only shows it again.
    struct Composed {
        const OpenedPhoto* photo = nullptr;
        Reshaping reshaping;
        EditingState state;
        bool operator==(const Composed&) const = default;
    };
    // What a picture composed now would be made of.
    Composed current() const { return {photo_.get(), *reshaping_, *state_}; }
    std::optional<Composed> composed_;
    // The full composition under way on another thread, and what it is
    // made of; the compositor is the worker's until it is done.
    BackgroundJob fullJob_;
    std::optional<Composed> jobInputs_, failedInputs_;
    QTimer settleTimer_;
    // The interactive frame: the photo reduced to it, and what its
    // compositor's picture was made of.
    struct Proxy {
        const OpenedPhoto* of = nullptr;
        ProxyFrame frame;
        OpenedPhoto photo;
    };
    std::optional<Proxy> proxy_;
    Compositor frameCompositor_;
    std::optional<Composed> framed_;
    Framing framing_;
    bool showingUntouched_ = false, splitView_ = false, panKeyHeld_ = false;
    std::optional<QPointF> panFrom_; // view pixels, y down, while a pan drags
    QImage shown_; // the last picture drawn, framed in the view
    // From the photo's colour space to the screen's (sRGB: Qt 6.4 names no
    // other); the identity for sRGB photos.
    QColorTransform toScreen_;
};
