#include "EffectPanel.h"

#include "AppDelegate.h"
#include "ColourWell.h"
#include "View_Picture.h"

#include <QCheckBox>
#include <QLabel>
#include <QSignalBlocker>
#include <QSlider>

#include <cmath>

EffectPanel::EffectPanel(AppDelegate& app)
    : QWidget(nullptr, Qt::Tool)
    , app(app)
{
    setAttribute(Qt::WA_DeleteOnClose);
}

EditingState& EffectPanel::state()
{
    return app.state;
}

void EffectPanel::redraw()
{
    if (QWidget* preview = app.viewPreview())
        preview->update();
}

void EffectPanel::bindApply(QCheckBox* box, bool& effect, const QString& title)
{
    box->setText(title);
    box->setChecked(effect);
    connect(box, &QCheckBox::toggled, this, [this, &effect](bool on) {
        effect = on;
        redraw();
    });
}

void EffectPanel::bindSlider(QSlider* slider, QLabel* value, int shown, std::function<void(int)> write)
{
    slider->setValue(shown);
    value->setNum(slider->value());
    connect(slider, &QSlider::valueChanged, this, [this, value, write = std::move(write)](int position) {
        write(position);
        value->setNum(position);
        redraw();
    });
}

void EffectPanel::bindHundredths(QSlider* slider, QLabel* value, float& field)
{
    bindSlider(slider, value, int(std::lround(field * 100)), [&field](int position) { field = float(position) / 100; });
}

void EffectPanel::bindColour(ColourWell* well, RgbaColor& field)
{
    well->setColour(field);
    connect(well, &ColourWell::colourChosen, this, [this, &field](const RgbaColor& colour) {
        field = colour;
        redraw();
    });
}

void EffectPanel::showMode(const ModeControls& c)
{
    if (!c.effect)
        c.mode = false;
    c.apply->setChecked(c.effect);
    c.modeBox->setChecked(c.mode);
    c.modeBox->setEnabled(c.effect);
    c.enableValues(c.effect && !c.mode);
}

void EffectPanel::applyWithMode(const ModeControls& c, bool on)
{
    c.effect = on;
    c.mode = false;
    {
        const QSignalBlocker quiet(c.modeBox);
        c.modeBox->setChecked(false);
    }
    c.enableValues(on);
    c.modeBox->setEnabled(on);
    redraw();
}

void EffectPanel::switchMode(const ModeControls& c, bool on)
{
    if (c.otherMode)
        return;
    c.mode = on;
    c.enableValues(!on);
    redraw();
}
