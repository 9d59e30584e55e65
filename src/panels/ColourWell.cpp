#include "ColourWell.h"

#include <QColorDialog>
#include <QPainter>
#include <QStyleOptionButton>
#include <QStylePainter>

ColourWell::ColourWell(QWidget* parent)
    : QPushButton(parent)
{
    setMinimumSize(48, 24);
    connect(this, &QPushButton::clicked, this, &ColourWell::choose);
    setColour(colour_);
}

void ColourWell::setColour(const RgbaColor& colour)
{
    colour_ = colour;
    setToolTip(QColor::fromRgbF(colour.r, colour.g, colour.b).name());
    update();
}

std::unique_ptr<QColorDialog> ColourWell::colourDialog() const
{
    // The panel, not the well, is the dialog's parent: it is a dialog of the
    // panel's window.
    auto dialog = std::make_unique<QColorDialog>(QColor::fromRgbF(colour_.r, colour_.g, colour_.b, colour_.a),
                                                  window());
    dialog->setOption(QColorDialog::ShowAlphaChannel);
    return dialog;
}

void ColourWell::choose()
{
    const std::unique_ptr<QColorDialog> dialog = colourDialog();
    if (dialog->exec() != QDialog::Accepted)
        return;
    const QColor chosen = dialog->selectedColor();
    setColour({float(chosen.redF()), float(chosen.greenF()), float(chosen.blueF()), float(chosen.alphaF())});
    emit colourChosen(colour_);
}

// The button as the style draws it, with the colour inside its frame. A
// disabled well shows its colour faded into the disabled button.
void ColourWell::paintEvent(QPaintEvent*)
{
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    option.text.clear();
    painter.drawControl(QStyle::CE_PushButton, option);
    const QRect swatch = style()->subElementRect(QStyle::SE_PushButtonContents, &option, this).adjusted(2, 2, -2, -2);
    const QColor shown = QColor::fromRgbF(colour_.r, colour_.g, colour_.b);
    painter.setOpacity(isEnabled() ? 1.0 : 0.3);
    painter.fillRect(swatch, shown);
    painter.setOpacity(1.0);
    painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::WindowText));
    painter.drawRect(swatch.adjusted(0, 0, -1, -1));
}
