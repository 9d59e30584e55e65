#pragma once

#include "Compositor.h"

#include <QRectF>
#include <QWidget>

struct EditingState;
struct OpenedPhoto;
struct SaveRequest;

// The preview of the main window: on every redraw the retouched picture is
// composed at the photo's full size and shown fitted into the view; black
// without a photo. A pending save request is fulfilled by the same redraw.
class View_Picture : public QWidget {
    Q_OBJECT

public:
    explicit View_Picture(QWidget* parent = nullptr);

    // What to show, owned by the application and read at every redraw.
    void setSources(const OpenedPhoto* photo, const EditingState* state, SaveRequest* saveRequest);

    // Where the photo was drawn by the last redraw, in view coordinates with
    // the origin at the bottom-left.
    QRectF rectDrawCamera() const { return rectDrawCamera_; }
    const Handles& handles() const { return compositor_.handles(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const OpenedPhoto* photo_ = nullptr;
    const EditingState* state_ = nullptr;
    SaveRequest* saveRequest_ = nullptr;
    Compositor compositor_;
    QRectF rectDrawCamera_;
};
