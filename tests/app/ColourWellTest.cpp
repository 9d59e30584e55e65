#include "ColourWell.h"

#include <QApplication>
#include <QColorDialog>

#include <gtest/gtest.h>

namespace {

QColor centreOf(QWidget& widget)
{
    const QImage shot = widget.grab().toImage();
    return shot.pixelColor(shot.width() / 2, shot.height() / 2);
}

double meanLightness(const QImage& shot)
{
    double sum = 0;
    for (int y = 0; y < shot.height(); y += 4)
        for (int x = 0; x < shot.width(); x += 4)
            sum += shot.pixelColor(x, y).lightnessF();
    return sum / ((shot.height() + 3) / 4 * ((shot.width() + 3) / 4));
}

} // namespace

TEST(ColourWell, ShowsItsColourAndLooksDisabledWhenDisabled)
{
    QWidget panel;
    ColourWell well(&panel);
    well.resize(60, 28);
    well.setColour({0, 0, 0, 1});
    EXPECT_EQ(centreOf(well), QColor(Qt::black));
    well.setColour({0.1f, 0.3f, 0.9f, 1});
    const QColor enabled = centreOf(well);
    EXPECT_EQ(enabled.rgb(), QColor::fromRgbF(0.1f, 0.3f, 0.9f).rgb());

    well.setEnabled(false);
    const QColor disabled = centreOf(well);
    EXPECT_NE(disabled, enabled) << "a disabled well must not look like an enabled one";
    EXPECT_GT(disabled.lightness(), enabled.lightness()) << "faded";
}

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
