#include "ColourWell.h"

#include <QApplication>
#include <QColorDialog>

#include <gtest/gtest.h>

namespace {

double meanLightness(const QImage& shot)
{
    double sum = 0;
    for (int y = 0; y < shot.height(); y += 4)
        for (int x = 0; x < shot.width(); x += 4)
            sum += shot.pixelColor(x, y).lightnessF();
    return sum / ((shot.height() + 3) / 4 * ((shot.width() + 3) / 4));
}

} // namespace

TEST(ColourWell, DialogKeepsTheDesktopsLookWhateverTheColour)
{
    QWidget panel;
    ColourWell well(&panel);
    well.setColour({0, 0, 0, 1});
    const std::unique_ptr<QColorDialog> dialog = well.colourDialog();
    EXPECT_EQ(dialog->currentColor(), QColor(Qt::black));
    EXPECT_EQ(dialog->palette().color(QPalette::Window), QApplication::palette().color(QPalette::Window));
    EXPECT_TRUE(dialog->styleSheet().isEmpty());
    dialog->resize(dialog->sizeHint());
    EXPECT_GT(meanLightness(dialog->grab().toImage()), 0.5) << "not painted in the well's black";
    EXPECT_TRUE(dialog->testOption(QColorDialog::ShowAlphaChannel));
}
