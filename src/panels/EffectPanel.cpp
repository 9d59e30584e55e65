#include "EffectPanel.h"

#include "ColourWell.h"

#include <QApplication>
#include <QCheckBox>
#include <QEvent>
#include <QFontMetrics>
#include <QGridLayout>
#include <QPushButton>
#include <QLabel>
#include <QSignalBlocker>
#include <QSlider>

#include <algorithm>
#include <cmath>

namespace {

// What a window manager puts beside a title: its buttons and margins.
constexpr int kTitleBarDecorations = 110;

} // namespace

// A part of the main window until the window docks it beside the preview.
EffectPanel::EffectPanel(PanelContext& context)
    : QWidget(context.mainWindow)
    , context_(context)
{
    setAttribute(Qt::WA_DeleteOnClose);
}

int EffectPanel::widthForTitle(const QString& title)
{
    QFont titleFont = QApplication::font();
    titleFont.setBold(true);
    return QFontMetrics(titleFont).horizontalAdvance(title) + kTitleBarDecorations;
}

// The panel is never narrower than its title, or its dock's title bar
// shows "…".
void EffectPanel::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::WindowTitleChange)
        setMinimumWidth(std::max(minimumSizeHint().width(), widthForTitle(windowTitle())));
    QWidget::changeEvent(event);
}

void EffectPanel::showState()
{
    for (const auto& [control, show] : shows_) {
        const QSignalBlocker quiet(control);
        show();
    }
}

void EffectPanel::offerDefaults(std::function<void()> restore)
{
    auto* button = new QPushButton(tr("Defaults"), this);
    button->setObjectName("buttonDefaults");
    if (auto* grid = qobject_cast<QGridLayout*>(layout()))
        grid->addWidget(button, grid->rowCount(), 0, 1, grid->columnCount(), Qt::AlignLeft);
    else if (layout())
        layout()->addWidget(button);
    connect(button, &QPushButton::clicked, this, [this, restore = std::move(restore)] {
        restore();
        showState();
        for (const WriteOnlySlider& s : writeOnly_) {
            const QSignalBlocker quiet(s.slider);
            s.slider->setValue(s.start);
            s.value->setNum(s.start);
        }
        redraw();
    });
}

void EffectPanel::addShow(QWidget* control, std::function<void()> show)
{
    shows_.emplace_back(control, std::move(show));
    const QSignalBlocker quiet(control);
    shows_.back().second();
}

void EffectPanel::bindApply(QCheckBox* box, bool& effect, const QString& title)
{
    box->setText(title);
    addShow(box, [box, &effect] { box->setChecked(effect); });
    connect(box, &QCheckBox::toggled, this, [this, &effect](bool on) {
        effect = on;
        redraw();
    });
}

void EffectPanel::bindSlider(QSlider* slider, QLabel* value, std::function<int()> shown, std::function<void(int)> write)
{
    if (shown)
        addShow(slider, [slider, value, shown = std::move(shown)] {
            slider->setValue(shown());
            value->setNum(slider->value());
        });
    else
        writeOnly_.push_back({slider, value, slider->value()});
    value->setNum(slider->value());
    connect(slider, &QSlider::valueChanged, this, [this, value, write = std::move(write)](int position) {
        write(position);
        value->setNum(position);
        redraw();
    });
}

void EffectPanel::bindHundredths(QSlider* slider, QLabel* value, float& field)
{
    bindSlider(slider, value, [&field] { return int(std::lround(field * 100)); },
               [&field](int position) { field = float(position) / 100; });
}

void EffectPanel::setSliderRange(QSlider* slider, const SettingRange& range)
{
    const double perUnit = range.slider == SliderScale::Hundredths ? 100 : 1;
    slider->setRange(int(std::lround(range.min * perUnit)), int(std::lround(range.max * perUnit)));
}

void EffectPanel::setSliderStart(QSlider* slider, int position)
{
    slider->setValue(position);
}

void EffectPanel::bindColour(ColourWell* well, RgbaColor& field)
{
    addShow(well, [well, &field] { well->setColour(field); });
    connect(well, &ColourWell::colourChosen, this, [this, &field](const RgbaColor& colour) {
        field = colour;
        redraw();
    });
}

void EffectPanel::bindMode(const ModeControls& c)
{
    if (!c.effect)
        c.mode = false;
    addShow(c.modeBox, [c] {
        const QSignalBlocker quietApply(c.apply);
        c.apply->setChecked(c.effect);
        c.modeBox->setChecked(c.mode);
        c.modeBox->setEnabled(c.effect);
        c.enableValues(c.effect && !c.mode);
    });
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
