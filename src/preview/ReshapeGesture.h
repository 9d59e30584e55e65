#pragma once

#include "EditingState.h"
#include "Reshaping.h"

#include <QPointF>
#include <QRectF>
#include <QString>

#include <array>

// What the left button does on the photo while a mouse mode is on: it
// grabs a corner or the whole of a cheek paint area, or an under-eye
// point, and moves it. Positions come in percent of the photo and in photo
// pixels (image space, y up), as the preview maps the pointer.
class ReshapeGesture {
public:
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

    // The left button went down at `percent` of the photo: the handles in
    // its one-percent cell are taken, in their stated order.
    void press(QPointF percent, const EditingState& state, const Reshaping& reshaping, QSizeF imgSize);
    // The pointer moved to `pixel` with the button down: what is held
    // follows it. Says whether anything moved.
    bool drag(QPointF pixel, const EditingState& state, Reshaping& reshaping, QSizeF imgSize);
    // The pointer moved with no button down while a mode is on: the
    // handles under it are marked, which a press then drags. Says whether
    // the pointer is over the left area (the open hand).
    bool hover(QPointF percent, const EditingState& state, const Reshaping& reshaping, QSizeF imgSize);
    // The button came up: nothing is held. The name of the step it made
    // when it moved something ("Move Blush Area", "Move Under-Eye Ring").
    QString release();

private:
    bool moved_ = false;
    bool dragCheeks(QPointF pixel, Reshaping& reshaping) const;
    bool dragUnderEyePoints(QPointF pixel, Reshaping& reshaping, double imageHeight) const;
};
