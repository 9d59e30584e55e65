#pragma once

#include "EditingState.h"

#include <QPushButton>

#include <memory>

class QColorDialog;

// A button that shows a colour and lets the user choose another in the
// colour dialog (transparency included). The colour is painted as a swatch
// inside the button, not set as a style sheet, so the dialog opened from it
// keeps the desktop's own look and a disabled well looks disabled.
class ColourWell : public QPushButton {
    Q_OBJECT

public:
    explicit ColourWell(QWidget* parent = nullptr);

    RgbaColor colour() const { return colour_; }
    void setColour(const RgbaColor& colour);

    // The dialog the well opens, set to its colour.
    std::unique_ptr<QColorDialog> colourDialog() const;

signals:
    // The user chose a colour.
    void colourChosen(const RgbaColor& colour);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void choose();

    RgbaColor colour_{0, 0, 0, 1};
};
