#pragma once

#include <QWidget>

#include <functional>

struct EditingState;

// The small round control of the cheek panel in which a click sets where
// that cheek's blush is centred (percent of the paint area, y from the top).
class ViewCircleCenter : public QWidget {
    Q_OBJECT

public:
    explicit ViewCircleCenter(QWidget* parent = nullptr);

    // The state it shows and sets, and whom to tell it changed.
    void setState(EditingState* state, std::function<void()> changed);

    bool b_Left = true; // this circle controls the left cheek, else the right
    QPointF mouseDownPos;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    QPointF& centre() const;

    EditingState* state_ = nullptr;
    std::function<void()> changed_;
};
