#pragma once

#include "PhotoTool.h"
#include "PreviewGeometry.h"
#include "RenderSession.h"

#include <QColorTransform>
#include <QRectF>
#include <QStringList>
#include <QWidget>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

class Document;

// The preview of the main window: the retouched picture of a document, as
// its render session composes it, shown fitted into the view or zoomed;
// black without a photo. The untouched photo can be shown instead of it, or
// beside it in a split view, without composing anything. The left button
// is the tool's of the mouse mode that is on (moving the make-up, picking a
// colour, clicking spots): the view maps the pointer to the photo and hands
// the events on, knowing nothing of the effect the tool belongs to.
class View_Picture : public QWidget {
    Q_OBJECT

public:
    explicit View_Picture(QWidget* parent = nullptr);
    ~View_Picture() override;

    // The document shown and changed by the mouse, and its pictures.
    void setDocument(Document* document, RenderSession* session);

    // Called after a tool changed a setting with a click (a colour picked,
    // a spot), with the field's name, and when the pointer should look
    // regular again.
    std::function<void(const char* field)> onSettingChangedOnPhoto;
    std::function<void()> Change_Cursor_To_Regular;

    // The tool of the mouse mode that is on, if any.
    const PhotoTool* activeTool() const;
    // What the tools' overlays show, for the status line.
    QStringList overlayNotes();

    // The left button on the photo, handed to the active tool; the fields
    // are the gesture's (view space, y up).
    void mouseDown(QMouseEvent* event);
    void mouseDragged(QMouseEvent* event);
    void mouseUp(QMouseEvent* event);
    void mouseMoved(QMouseEvent* event);
    bool b_Mouse_Down = false;
    QPointF mouseDownPos, mouseDownPos_Mouse_Down;

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
    void setSplitView(bool split);
    bool splitView() const { return splitView_; }
    // While the pan key is held, the left button pans too.
    void setPanKeyHeld(bool held);

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
    void photoReplaced();
    ProxyFrame frameInView() const;
    void showFramed(const RenderSession::Shown& shown);
    void convertToScreen(const QRectF& onScreen);
    void setFraming(const Framing& framing);
    QSizeF photoSize() const;
    bool panning(const QMouseEvent* event) const;
    QPointF viewPoint(const QMouseEvent* event) const;
    ToolPointer pointerAt(const QMouseEvent* event) const;
    PhotoTool* toolOn() const;
    bool hasPhoto() const;

    class Target;
    Document* document_ = nullptr;
    RenderSession* session_ = nullptr;
    std::unique_ptr<Target> target_;
    std::vector<std::unique_ptr<PhotoTool>> tools_;
    PhotoTool* pressed_ = nullptr; // the tool a left press went to, until its release
    Framing framing_;
    bool showingUntouched_ = false, splitView_ = false, panKeyHeld_ = false;
    std::optional<QPointF> panFrom_; // view pixels, y down, while a pan drags
    QImage shown_; // the last picture drawn, framed in the view
    // From the photo's colour space to the screen's (sRGB: Qt 6.4 names no
    // other); the identity for sRGB photos.
    QColorTransform toScreen_;
};
