#pragma once

#include "EditingState.h"

#include <QPushButton>

// A button that shows a colour and lets the user choose another in the
// colour dialog (transparency included).
class ColourWell : public QPushButton {
    Q_OBJECT

public:
    explicit ColourWell(QWidget* parent = nullptr);

    RgbaColor colour() const { return colour_; }
    void setColour(const RgbaColor& colour);

signals:
    // The user chose a colour.
    void colourChosen(const RgbaColor& colour);

private:
    void choose();

    RgbaColor colour_{0, 0, 0, 1};
};
