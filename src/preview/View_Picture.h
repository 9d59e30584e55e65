#pragma once

#include "Compositor.h"

#include <QRectF>
#include <QWidget>

#include <array>
#include <functional>
#include <memory>

struct EditingState;
struct OpenedPhoto;
struct Reshaping;
struct SaveRequest;

// The preview of the main window: on every redraw the retouched picture is
// composed at the photo's full size and shown fitted into the view; black
// without a photo. A pending save request is fulfilled by the same redraw.
class View_Picture : public QWidget {
    Q_OBJECT

public:
    explicit View_Picture(QWidget* parent = nullptr);

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

    // Where the photo was drawn by the last redraw, in view coordinates with
    // the origin at the bottom-left.
    QRectF rectDrawCamera() const { return rectDrawCamera_; }

    // The compositor of the redraws: its last picture and how many it made.
    const Compositor& compositor() const { return compositor_; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void showFitted(const QImage& working);
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
    QRectF rectDrawCamera_;
    QImage shown_; // the last picture drawn, fitted into the view
};
