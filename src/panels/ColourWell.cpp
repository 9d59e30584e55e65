#include "ColourWell.h"

#include <QColorDialog>

ColourWell::ColourWell(QWidget* parent)
    : QPushButton(parent)
{
    connect(this, &QPushButton::clicked, this, &ColourWell::choose);
    setColour(colour_);
}

void ColourWell::setColour(const RgbaColor& colour)
{
    colour_ = colour;
    const QColor shown = QColor::fromRgbF(colour.r, colour.g, colour.b);
    setStyleSheet(QString("background-color: %1; border: 1px solid #444; min-height: 20px;").arg(shown.name()));
    setToolTip(shown.name());
}

void ColourWell::choose()
{
    const QColor chosen = QColorDialog::getColor(QColor::fromRgbF(colour_.r, colour_.g, colour_.b, colour_.a), this,
                                                 QString(), QColorDialog::ShowAlphaChannel);
    if (!chosen.isValid())
        return;
    setColour({float(chosen.redF()), float(chosen.greenF()), float(chosen.blueF()), float(chosen.alphaF())});
    emit colourChosen(colour_);
}
