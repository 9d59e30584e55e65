#include "View_Picture.h"

#include "Document.h"
#include "EffectCatalogue.h"
#include "ImageSpace.h"

#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <cmath>
#include <utility>

View_Picture::View_Picture(QWidget* parent)
    : QWidget(parent)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
}

// What the tools change: the document, which records each step. A setting
// changed by a click is noted, so the window can show it in its panel.
class View_Picture::Target final : public ToolTarget {
public:
    Target(Document& document, QWidget& view)
        : document_(document)
        , view_(view)
    {
    }
    const OpenedPhoto& openedPhoto() const override { return *document_.photo(); }
    const PhotoEdits& photoEdits() const override { return document_.photoEdits; }
    PhotoEdits& photoEdits() override { return document_.photoEdits; }
    void moved() override { document_.moved(); }
    void gestureEnded(const QString& step) override { document_.gestureEnded(step); }
    void overlayChanged() override { view_.update(); }
    void photoEdited(const QString& step) override { document_.changed(Change::onPhoto(step)); }
    void settingChanged(const char* field, const QString& step) override
    {
        document_.changed(step.isEmpty() ? Change::of(field) : Change::act(field, step));
        changedField = field;
    }
    const char* changedField = nullptr;

private:
    Document& document_;
    QWidget& view_;
};

View_Picture::~View_Picture() = default;

void View_Picture::setDocument(Document* document, RenderSession* session)
{
    document_ = document;
    session_ = session;
    target_ = std::make_unique<Target>(*document, *this);
    tools_ = photoTools(document->state);
    connect(document, &Document::edited, this, [this] { update(); });
    connect(document, &Document::photoReplaced, this, &View_Picture::photoReplaced);
    connect(session, &RenderSession::fullPictureReady, this, [this] { update(); });
    photoReplaced();
}

// A new photo opens fitted, in its own colours on the screen.
void View_Picture::photoReplaced()
{
    const OpenedPhoto& photo = *document_->photo();
    toScreen_ = photo.isEmpty() || isSrgb(photo.metadata)
                    ? QColorTransform()
                    : photo.metadata.colourSpace.transformationToColorSpace(QColorSpace::SRgb);
    framing_ = {};
    update();
    emit framingChanged();
}

void View_Picture::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), Qt::black);
    if (!hasPhoto())
        return;
    QString failure;
    // Holding the compare key needs no retouched picture.
    const RenderSession::Shown working = showingUntouched_ ? RenderSession::Shown{}
                                                           : session_->pictureFor(frameInView(), failure);
    // A redraw that failed (the memory ran out) leaves the last good picture.
    if (working.picture || failure.isEmpty())
        showFramed(working);
    painter.drawImage(QPointF(0, 0), shown_);
    const QRectF onScreen = flipped(rectDrawCamera(), height());
    const double k = onScreen.width() / photoSize().width();
    painter.setClipRect(onScreen & QRectF(rect()));
    for (const std::unique_ptr<PhotoTool>& tool : tools_)
        tool->paintOverlay(painter, QTransform::fromTranslate(onScreen.x(), onScreen.y()).scale(k, k), *target_);
}

// The part of the photo in view, at the size it is shown.
ProxyFrame View_Picture::frameInView() const
{
    const QRectF onScreen = flipped(rectDrawCamera(), height());
    const QRectF visible = onScreen & QRectF(rect());
    const double photoPerView = photoSize().width() / onScreen.width();
    const QRectF inPhoto((visible.topLeft() - onScreen.topLeft()) * photoPerView, visible.size() * photoPerView);
    return proxyFrameFor(photoSize().toSize(), inPhoto, zoom());
}

// Draws the retouched picture, the untouched photo or both halves into the
// frame. The retouched picture is opaque and covers the photo completely,
// so the photo itself need not be drawn under it.
void View_Picture::showFramed(const RenderSession::Shown& shown)
{
    const QImage* working = shown.picture;
    const qreal ratio = devicePixelRatioF();
    const QSize pixels = (QSizeF(size()) * ratio).toSize();
    if (shown_.size() != pixels)
        shown_ = QImage(pixels, QImage::Format_ARGB32_Premultiplied);
    shown_.setDevicePixelRatio(ratio);
    shown_.fill(Qt::black);
    const QRectF onScreen = flipped(rectDrawCamera(), height());
    const QImage& untouched = document_->photo()->img_Basic;
    // Where the picture goes: the frame itself for the full picture.
    const double k = onScreen.width() / photoSize().width();
    const QRectF target = shown.part == QRectF(QPointF(0, 0), photoSize())
                              ? onScreen
                              : QRectF(onScreen.topLeft() + shown.part.topLeft() * k, shown.part.size() * k);
    QPainter painter(&shown_);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    // Holding the compare key shows the photo whole, in the split view too.
    if (showingUntouched_ || !working || !splitView_) {
        painter.drawImage(showingUntouched_ || !working ? onScreen : target,
                          showingUntouched_ || !working ? untouched : *working);
        convertToScreen(onScreen);
        return;
    }
    // The split runs through the middle of the part of the frame in view.
    const QRectF visible = onScreen & QRectF(rect());
    const double split = std::round(visible.center().x() * ratio) / ratio;
    painter.setClipRect(QRectF(onScreen.left(), onScreen.top(), split - onScreen.left(), onScreen.height()));
    painter.drawImage(onScreen, untouched);
    painter.setClipRect(QRectF(split, onScreen.top(), onScreen.right() - split, onScreen.height()));
    painter.drawImage(target, *working);
    painter.setClipping(false);
    convertToScreen(onScreen);
    // A light line with dark edges shows on light and dark photos alike.
    const double onePixel = 1 / ratio;
    painter.fillRect(QRectF(split - onePixel, visible.top(), 3 * onePixel, visible.height()), QColor(0, 0, 0, 160));
    painter.fillRect(QRectF(split, visible.top(), onePixel, visible.height()), Qt::white);
}

// Only the frame's pixels in view are converted, at their on-screen size:
// a redraw costs the same at any photo size.
void View_Picture::convertToScreen(const QRectF& onScreen)
{
    if (toScreen_.isIdentity())
        return;
    const qreal ratio = shown_.devicePixelRatio();
    const QRect area = QRectF(onScreen.topLeft() * ratio, onScreen.size() * ratio).toAlignedRect() & shown_.rect();
    if (area.isEmpty())
        return;
    // A view into shown_'s own rows: converted in place, nothing copied.
    QImage framePart(shown_.scanLine(area.top()) + area.left() * 4, area.width(), area.height(),
                     shown_.bytesPerLine(), shown_.format());
    framePart.applyColorTransform(toScreen_);
}

QSizeF View_Picture::photoSize() const { return document_ ? document_->photo()->imgSize : QSizeF(); }

QRectF View_Picture::rectDrawCamera() const
{
    if (!hasPhoto())
        return {};
    return framedPhoto(framing_, photoSize(), QSizeF(size()), devicePixelRatioF());
}

double View_Picture::zoom() const { return shownZoom(framing_, photoSize(), QSizeF(size()), devicePixelRatioF()); }

void View_Picture::setFraming(const Framing& framing)
{
    if (framing == framing_)
        return;
    framing_ = framing;
    update();
    emit framingChanged();
}

void View_Picture::zoomToFit() { setFraming(Framing{}); }

void View_Picture::zoomToActualPixels()
{
    if (hasPhoto())
        setFraming(zoomedAbout(framing_, 1, QRectF(rect()).center(), photoSize(), QSizeF(size()), devicePixelRatioF()));
}

void View_Picture::zoomBy(int steps) { zoomBy(steps, QRectF(rect()).center()); }

void View_Picture::zoomBy(int steps, QPointF anchor)
{
    if (hasPhoto())
        setFraming(zoomedAbout(framing_, steppedZoom(zoom(), steps), anchor, photoSize(), QSizeF(size()),
                               devicePixelRatioF()));
}

void View_Picture::panBy(QPointF delta)
{
    if (hasPhoto())
        setFraming(pannedBy(framing_, delta, photoSize(), QSizeF(size()), devicePixelRatioF()));
}

void View_Picture::setShowingUntouched(bool untouched)
{
    showingUntouched_ = untouched;
    update();
}

void View_Picture::setSplitView(bool split)
{
    if (split == splitView_)
        return;
    splitView_ = split;
    update();
    emit splitViewChanged(split);
}

void View_Picture::setPanKeyHeld(bool held)
{
    panKeyHeld_ = held; // a pan under way ends with its button, not with the key
    setCursor(panFrom_ ? Qt::ClosedHandCursor : held ? Qt::OpenHandCursor : Qt::ArrowCursor);
}

// A fitted photo stays fitted to the new size; a zoomed one keeps its pan
// within the new bounds. Either way the zoom shown may change.
void View_Picture::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    emit framingChanged();
}

void View_Picture::wheelEvent(QWheelEvent* event)
{
    const QPoint degrees = event->angleDelta() / 8;
    if (!(event->modifiers() & Qt::ControlModifier))
        panBy(QPointF(degrees) * 2); // scrolling moves a zoomed photo
    else if (const int steps = degrees.y() / 15; steps != 0)
        zoomBy(steps, event->position());
    event->accept();
}

bool View_Picture::panning(const QMouseEvent* e) const
{
    return e->button() == Qt::MiddleButton || (e->button() == Qt::LeftButton && panKeyHeld_);
}

bool View_Picture::hasPhoto() const { return document_ && document_->isOpen(); }

QPointF View_Picture::viewPoint(const QMouseEvent* event) const { return flipped(event->position(), height()); }

ToolPointer View_Picture::pointerAt(const QMouseEvent* event) const
{
    const QPointF percent = percentInFrame(viewPoint(event), rectDrawCamera());
    return {event->position(), percent, pixelAtPercent(percent, photoSize())};
}

PhotoTool* View_Picture::toolOn() const
{
    if (!hasPhoto())
        return nullptr;
    for (const std::unique_ptr<PhotoTool>& tool : tools_)
        if (tool->isOn())
            return tool.get();
    return nullptr;
}

const PhotoTool* View_Picture::activeTool() const { return toolOn(); }

QStringList View_Picture::overlayNotes()
{
    QStringList notes;
    if (hasPhoto())
        for (const std::unique_ptr<PhotoTool>& tool : tools_)
            if (const QString note = tool->overlayNote(*target_); !note.isEmpty())
                notes << note;
    return notes;
}

void View_Picture::mousePressEvent(QMouseEvent* event)
{
    if (panning(event)) { // a pan is never a handle drag or a pick
        panFrom_ = event->position();
        setCursor(Qt::ClosedHandCursor);
        return;
    }
    if (event->button() == Qt::LeftButton) // gestures, handles and picking are the left button's
        mouseDown(event);
}

void View_Picture::mouseMoveEvent(QMouseEvent* event)
{
    if (panFrom_) {
        panBy(event->position() - *panFrom_);
        panFrom_ = event->position();
        return;
    }
    if (b_Mouse_Down)
        mouseDragged(event);
    else
        mouseMoved(event);
}

void View_Picture::mouseReleaseEvent(QMouseEvent* event)
{
    if (panFrom_ && (event->button() == Qt::MiddleButton || event->button() == Qt::LeftButton)) {
        panFrom_.reset();
        setCursor(panKeyHeld_ ? Qt::OpenHandCursor : Qt::ArrowCursor);
        return;
    }
    if (event->button() == Qt::LeftButton)
        mouseUp(event);
}

void View_Picture::mouseDown(QMouseEvent* event)
{
    b_Mouse_Down = true;
    pressed_ = toolOn();
    if (!pressed_)
        return;
    mouseDownPos = mouseDownPos_Mouse_Down = viewPoint(event);
    pressed_->press(pointerAt(event), *target_);
}

void View_Picture::mouseDragged(QMouseEvent* event)
{
    mouseDownPos = viewPoint(event);
    if (pressed_)
        pressed_->drag(pointerAt(event), *target_);
}

void View_Picture::mouseMoved(QMouseEvent* event)
{
    mouseDownPos = viewPoint(event);
    if (PhotoTool* tool = toolOn())
        if (const std::optional<QCursor> cursor = tool->hover(pointerAt(event), *target_))
            setCursor(*cursor);
}

void View_Picture::mouseUp(QMouseEvent* event)
{
    b_Mouse_Down = false;
    mouseDownPos = viewPoint(event);
    target_->changedField = nullptr;
    if (PhotoTool* tool = std::exchange(pressed_, nullptr); tool && hasPhoto())
        tool->release(pointerAt(event), *target_);
    if (target_->changedField && onSettingChangedOnPhoto)
        onSettingChangedOnPhoto(target_->changedField);
    if (Change_Cursor_To_Regular)
        Change_Cursor_To_Regular();
    update();
}
