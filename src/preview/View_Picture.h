#pragma once

#include <QRectF>
#include <QWidget>

struct OpenedPhoto;

// The preview of the main window: the opened photo fitted into the view,
// black where there is no photo.
class View_Picture : public QWidget {
    Q_OBJECT

public:
    explicit View_Picture(QWidget* parent = nullptr);

    // The photo to show, owned by the application and read at every redraw;
    // an empty photo shows nothing.
    void setPhoto(const OpenedPhoto* photo) { photo_ = photo; }

    // Where the photo was drawn by the last redraw.
    QRectF rectDrawCamera() const { return rectDrawCamera_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const OpenedPhoto* photo_ = nullptr;
    QRectF rectDrawCamera_;
};
