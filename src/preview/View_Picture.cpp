#include "View_Picture.h"

#include "EditingState.h"
#include "ImageSpace.h"
#include "OpenedPhoto.h"
#include "Picture.h"
#include "PictureSaver.h"
#include "PreviewGeometry.h"
#include "SinglePrecision.h"

#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <cmath>

View_Picture::View_Picture(QWidget* parent)
    : QWidget(parent)
    , fullJob_([this](const QString& failure) { fullCompositionDone(failure); })
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
    settleTimer_.setSingleShot(true);
    settleTimer_.setInterval(kSettleDelay);
    connect(&settleTimer_, &QTimer::timeout, this, &View_Picture::startFullComposition);
}

View_Picture::~View_Picture() = default;

void View_Picture::setSources(std::shared_ptr<const OpenedPhoto> photo, Reshaping* reshaping, EditingState* state,
                              SaveRequest* saveRequest)
{
    const bool newPhoto = photo != photo_;
    photo_ = std::move(photo);
    reshaping_ = reshaping;
    state_ = state;
    saveRequest_ = saveRequest;
    if (newPhoto) { // a new photo opens fitted
        waitForFullComposition();
        settleTimer_.stop();
        proxy_.reset();
        framed_.reset();
        frameCompositor_ = Compositor();
        compositor_ = Compositor();
        composed_.reset();
        failedInputs_.reset();
        giveBackFreedPictures();
        toScreen_ = !photo_ || isSrgb(photo_->metadata)
                        ? QColorTransform()
                        : photo_->metadata.colourSpace.transformationToColorSpace(QColorSpace::SRgb);
        framing_ = {};
        emit framingChanged();
    }
}

void View_Picture::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), Qt::black);
    if (!hasPhoto())
        return;
    const bool savePending = saveRequest_ && saveRequest_->b_Save_Picture;
    QString failure;
    // Holding the compare key needs no retouched picture, unless a save
    // waits for one.
    const Shown working = showingUntouched_ && !savePending ? Shown{} : pictureToShow(savePending, failure);
    // A redraw that failed (the memory ran out) leaves the last good picture.
    if (working.picture || failure.isEmpty())
        showFramed(working);
    painter.drawImage(QPointF(0, 0), shown_);
    if (saveRequest_)
        fulfil(*saveRequest_, savePending ? working.picture : nullptr, failure, photo_->metadata);
}

bool View_Picture::settled() const
{
    return hasPhoto() && !fullJob_.running() && composed_ == current();
}

// The full picture when it is up to date or must be (a save, a photo too
// small for a frame to pay); otherwise the interactive frame of the view,
// with the full picture to follow.
View_Picture::Shown View_Picture::pictureToShow(bool needFull, QString& failure)
{
    const QRectF wholePhoto(QPointF(0, 0), photoSize());
    if (settled())
        return {&compositor_.working(), wholePhoto};
    const ProxyFrame frame = frameInView();
    if (needFull || !worthAProxy(photoSize().toSize(), frame)) {
        waitForFullComposition();
        return {upToDateWorking(failure), wholePhoto};
    }
    return {upToDateFrame(frame, failure), QRectF(frame.area)};
}

// The compositor's picture, composed again only when the photo, the
// reshaping or the settings differ from what it was made of.
const QImage* View_Picture::upToDateWorking(QString& failure)
{
    if (composed_ == current() && !compositor_.working().isNull())
        return &compositor_.working();
    composed_.reset();
    const QImage* working = compositor_.tryCompose(*photo_, *reshaping_, *state_, failure);
    if (working)
        composed_ = current();
    return working;
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

// The interactive frame of the current settings; a new one starts the wait
// for the full picture again.
const QImage* View_Picture::upToDateFrame(const ProxyFrame& frame, QString& failure)
{
    if (!proxy_ || proxy_->of != photo_.get() || !(proxy_->frame == frame)) {
        framed_.reset();
        proxy_.reset();
        try {
            proxy_ = Proxy{photo_.get(), frame, proxyPhoto(*photo_, frame)};
        } catch (const std::exception& error) {
            failure = QString::fromLocal8Bit(error.what());
            return nullptr;
        }
    }
    const Composed inputs = current();
    if (framed_ == inputs)
        return &frameCompositor_.working();
    framed_.reset();
    settleTimer_.start();
    const Reshaping reshaped = proxyReshaping(*reshaping_, photoSize(), frame);
    const QImage* picture = frameCompositor_.tryCompose(proxy_->photo, reshaped, *state_, failure, frame.photoPixelsPerPixel());
    if (picture)
        framed_ = inputs;
    return picture;
}

// On another thread, with copies of what the picture is made of; the
// compositor is not touched here until it is done.
void View_Picture::startFullComposition()
{
    if (!hasPhoto() || fullJob_.running() || settled())
        return;
    const Composed inputs = current();
    if (failedInputs_ == inputs)
        return; // the memory ran out for these already; the frame stays
    composed_.reset();
    jobInputs_ = inputs;
    fullJob_.start([this, photo = photo_, inputs] {
        QString failure;
        compositor_.tryCompose(*photo, inputs.reshaping, inputs.state, failure);
        return failure;
    });
}

void View_Picture::fullCompositionDone(const QString& failure)
{
    if (failure.isEmpty())
        composed_ = jobInputs_;
    else
        failedInputs_ = jobInputs_;
    jobInputs_.reset();
    // What changed while it was composed is composed after a rest of its own.
    if (!settled() && proxy_)
        settleTimer_.start();
    update();
}

void View_Picture::waitForFullComposition()
{
    fullJob_.finish();
}

// Draws the retouched picture, the untouched photo or both halves into the
// frame. The retouched picture is opaque and covers the photo completely,
// so the photo itself need not be drawn under it.
void View_Picture::showFramed(const Shown& shown)
{
    const QImage* working = shown.picture;
    const qreal ratio = devicePixelRatioF();
    const QSize pixels = (QSizeF(size()) * ratio).toSize();
    if (shown_.size() != pixels)
        shown_ = QImage(pixels, QImage::Format_ARGB32_Premultiplied);
    shown_.setDevicePixelRatio(ratio);
    shown_.fill(Qt::black);
    const QRectF onScreen = flipped(rectDrawCamera(), height());
    const QImage& untouched = photo_->img_Basic;
    // Where the picture goes: the frame itself for the full picture.
    const double k = onScreen.width() / photoSize().width();
    const QRectF target = shown.part == QRectF(QPointF(0, 0), photoSize())
                              ? onScreen
                              : QRectF(onScreen.topLeft() + shown.part.topLeft() * k, shown.part.size() * k);
    QPainter painter(&shown_);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    // Holding the compare key shows the photo whole, in the split view too.
    if (showingUntouched_ || !working || !splitView_) {
        if (showingUntouched_ || !working)
            painter.drawImage(onScreen, untouched);
        else
            painter.drawImage(target, *working);
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

QSizeF View_Picture::photoSize() const
{
    return photo_ ? photo_->imgSize : QSizeF();
}

QRectF View_Picture::rectDrawCamera() const
{
    if (!photo_ || photo_->isEmpty())
        return {};
    return framedPhoto(framing_, photoSize(), QSizeF(size()), devicePixelRatioF());
}

double View_Picture::zoom() const
{
    return shownZoom(framing_, photoSize(), QSizeF(size()), devicePixelRatioF());
}

void View_Picture::setFraming(const Framing& framing)
{
    if (framing == framing_)
        return;
    framing_ = framing;
    update();
    emit framingChanged();
}

void View_Picture::zoomToFit()
{
    setFraming(Framing{});
}

void View_Picture::zoomToActualPixels()
{
    if (!hasPhoto())
        return;
    setFraming(zoomedAbout(framing_, 1, QRectF(rect()).center(), photoSize(), QSizeF(size()), devicePixelRatioF()));
}

void View_Picture::zoomBy(int steps)
{
    zoomBy(steps, QRectF(rect()).center());
}

void View_Picture::zoomBy(int steps, QPointF anchor)
{
    if (!hasPhoto())
        return;
    const double to = steppedZoom(zoom(), steps);
    setFraming(zoomedAbout(framing_, to, anchor, photoSize(), QSizeF(size()), devicePixelRatioF()));
}

void View_Picture::panBy(QPointF delta)
{
    if (hasPhoto())
        setFraming(pannedBy(framing_, delta, photoSize(), QSizeF(size()), devicePixelRatioF()));
}

void View_Picture::setShowingUntouched(bool untouched)
{
    if (untouched == showingUntouched_)
        return;
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
    if (event->modifiers() & Qt::ControlModifier) {
        const int steps = degrees.y() / 15;
        if (steps != 0)
            zoomBy(steps, event->position());
    } else {
        panBy(QPointF(degrees) * 2); // scrolling moves a zoomed photo
    }
    event->accept();
}

bool View_Picture::panning(const QMouseEvent* event) const
{
    return event->button() == Qt::MiddleButton || (event->button() == Qt::LeftButton && panKeyHeld_);
}

namespace {

// The new area of a cheek while one of its handles is dragged to `m`
// (photo pixels, y up), relative to the area `r` at mouse-down. The
// right-up handle follows the right-bottom rule and the left-up handle
// moves the top edge while the width changes as for the left edge: both
// are the program's own rules. Nothing is limited; sizes may go negative.
QRectF draggedArea(const View_Picture::Dragging& d, const QRectF& r, QPointF m)
{
    const double x0 = r.x(), y0 = r.y(), w0 = r.width(), h0 = r.height();
    const double mx = m.x(), my = m.y();
    if (d.LB)
        return {mx, my, single(w0 + x0 - mx), single(h0 + y0 - my)};
    if (d.RB || d.RU)
        return {x0, my, single(mx - x0), single(h0 + y0 - my)};
    if (d.LU)
        return {x0, y0, single(w0 + x0 - mx), single(my - y0)};
    return {single(mx - w0 * 0.5), single(my - h0 * 0.5), w0, h0};
}

bool sameCell(QPointF a, QPointF b)
{
    return std::floor(a.x()) == std::floor(b.x()) && std::floor(a.y()) == std::floor(b.y());
}

} // namespace

bool View_Picture::hasPhoto() const
{
    return photo_ && !photo_->isEmpty() && reshaping_ && state_;
}

bool View_Picture::repositioning() const
{
    return state_ && (state_->b_Activated_Cheeks_Reposition || state_->b_Activated_Darken_Eyes_Reposition);
}

QPointF View_Picture::viewPoint(const QMouseEvent* event) const
{
    return flipped(event->position(), height()); // y up, as rectDrawCamera
}

// The one mapping from the pointer to the photo, through the frame shown.
QPointF View_Picture::percentOfPhoto(QPointF view) const
{
    const QRectF frame = rectDrawCamera();
    return singlePoint((view.x() - frame.x()) * 100 / frame.width(), (view.y() - frame.y()) * 100 / frame.height());
}

QPointF View_Picture::pixelOf(QPointF percent) const
{
    return singlePoint(photo_->imgSize.width() * percent.x() / 100, photo_->imgSize.height() * percent.y() / 100);
}

// A handle is hit when the pointer is in the same one-percent cell of the
// photo as the handle.
void View_Picture::hitCheekHandles(QPointF percent, Dragging& flags, const std::array<QPointF, 4>& corners)
{
    // corners: left-bottom, right-bottom, left-top, right-top
    if (sameCell(percent, corners[0]))
        flags.LB = true;
    else if (sameCell(percent, corners[1]))
        flags.RB = true;
    else if (sameCell(percent, corners[2]))
        flags.LU = true;
    else if (sameCell(percent, corners[3]))
        flags.RU = true;
    else if (QRectF(corners[1], corners[2]).normalized().contains(percent))
        flags.Crop = true;
}

void View_Picture::mousePressEvent(QMouseEvent* event)
{
    if (panning(event)) { // a pan is never a handle drag or a pick
        panFrom_ = event->position();
        setCursor(Qt::ClosedHandCursor);
        return;
    }
    if (event->button() != Qt::LeftButton)
        return; // gestures, handles and picking are the left button's
    b_Mouse_Down = true;
    if (!hasPhoto() || !repositioning())
        return;
    mouseDownPos = mouseDownPos_Mouse_Down = viewPoint(event);
    rect_Cheek_Left_Area_To_Paint_Mouse_Down = reshaping_->rect_Cheek_Left_Area_To_Paint;
    rect_Cheek_Right_Area_To_Paint_Mouse_Down = reshaping_->rect_Cheek_Right_Area_To_Paint;
    const QPointF percent = percentOfPhoto(mouseDownPos);
    const Handles h = handlesOf(*reshaping_, *state_, photoSize());
    if (state_->b_Activated_Cheeks_Reposition) {
        hitCheekHandles(percent, draggingLeft, h.pointPercenteLeft);
        hitCheekHandles(percent, draggingRight, h.pointPercenteRight);
    }
    if (state_->b_Activated_Darken_Eyes_Reposition) {
        for (size_t i = 0; i < 6; ++i)
            if (sameCell(percent, h.pointPercenteEyeLeft[i])) {
                draggingLeft.point[i] = true;
                break;
            }
        for (size_t i = 0; i < 6; ++i)
            if (sameCell(percent, h.pointPercenteEyeRight[i])) {
                draggingRight.point[i] = true;
                break;
            }
    }
}

bool View_Picture::dragCheeks(QPointF pixel)
{
    Reshaping& r = *reshaping_;
    const auto holds = [](const Dragging& d) { return d.LB || d.RB || d.RU || d.LU || d.Crop; };
    if (holds(draggingLeft))
        r.rect_Cheek_Left_Area_To_Paint = draggedArea(draggingLeft, rect_Cheek_Left_Area_To_Paint_Mouse_Down, pixel);
    if (holds(draggingRight))
        r.rect_Cheek_Right_Area_To_Paint = draggedArea(draggingRight, rect_Cheek_Right_Area_To_Paint_Mouse_Down, pixel);
    return holds(draggingLeft) || holds(draggingRight);
}

bool View_Picture::dragUnderEyePoints(QPointF pixel)
{
    // The points are kept with y from the top of the photo.
    const QPointF point = flipped(pixel, photo_->imgSize.height());
    const auto replaceHighest = [&](const Dragging& d, PointList& points) {
        for (size_t i = 6; i-- > 0;)
            if (d.point[i] && qsizetype(i) < points.size()) {
                points[qsizetype(i)] = point;
                return true;
            }
        return false;
    };
    const bool left = replaceHighest(draggingLeft, reshaping_->array_Eye_Darken_Left_Points);
    const bool right = replaceHighest(draggingRight, reshaping_->array_Eye_Darken_Right_Points);
    return left || right;
}

void View_Picture::mouseMoveEvent(QMouseEvent* event)
{
    if (panFrom_) {
        panBy(event->position() - *panFrom_);
        panFrom_ = event->position();
        return;
    }
    mouseDownPos = viewPoint(event);
    if (!hasPhoto())
        return;
    const QPointF percent = percentOfPhoto(mouseDownPos);
    if (!b_Mouse_Down) {
        // Hovering while a mode is on marks the handles under the pointer,
        // which a press then drags; the left area shows the open hand.
        if (!repositioning())
            return;
        const Handles h = handlesOf(*reshaping_, *state_, photoSize());
        hitCheekHandles(percent, draggingLeft, h.pointPercenteLeft);
        const QRectF leftArea(h.pointPercenteLeft[0], h.pointPercenteLeft[3]);
        setCursor(leftArea.normalized().contains(percent) ? Qt::OpenHandCursor : Qt::ArrowCursor);
        const QRectF rightArea(h.pointPercenteRight[0], h.pointPercenteRight[3]);
        if (rightArea.normalized().contains(percent))
            draggingRight.Crop = true;
        return;
    }
    // Only a drag that moved something rebuilds the picture.
    const QPointF pixel = pixelOf(percent);
    bool moved = false;
    if (state_->b_Activated_Cheeks_Reposition)
        moved = dragCheeks(pixel);
    if (state_->b_Activated_Darken_Eyes_Reposition)
        moved = dragUnderEyePoints(pixel) || moved;
    if (moved)
        update();
}

void View_Picture::pickColour(QPointF percent)
{
    const QImage& photo = photo_->img_Basic;
    const QPoint pixel(int(std::floor(photo_->imgSize.width() * percent.x() / 100)),
                       int(std::floor(photo_->imgSize.height() * (100 - percent.y()) / 100)));
    // The colour as the person sees it on the screen.
    const QColor picked = toScreen_.map(photo.valid(pixel) ? photo.pixelColor(pixel) : QColor(Qt::black));
    const RgbaColor colour{float(picked.redF()), float(picked.greenF()), float(picked.blueF()), float(picked.alphaF())};
    const int index = state_->i_Picking_Color_Index;
    if (index == 1)
        state_->color_Color_Cheeks_1 = colour;
    else if (index == 2)
        state_->color_Color_Cheeks_2 = colour;
    else if (index == 3)
        state_->color_Color_Cheeks_1_Right = colour;
    if (onColourPicked)
        onColourPicked(index);
    state_->b_Cheeks_Picking_Color = false;
}

void View_Picture::mouseReleaseEvent(QMouseEvent* event)
{
    if (panFrom_ && (event->button() == Qt::MiddleButton || event->button() == Qt::LeftButton)) {
        panFrom_.reset();
        setCursor(panKeyHeld_ ? Qt::OpenHandCursor : Qt::ArrowCursor);
        return;
    }
    if (event->button() != Qt::LeftButton)
        return;
    b_Mouse_Down = false;
    draggingLeft = draggingRight = {};
    mouseDownPos = viewPoint(event);
    if (hasPhoto() && state_->b_Cheeks_Picking_Color)
        pickColour(percentOfPhoto(mouseDownPos));
    if (Change_Cursor_To_Regular)
        Change_Cursor_To_Regular();
    update();
    if (onLeftReleased)
        onLeftReleased();
}
