#include "EffectPanel.h"

#include "ColourWell.h"

#include <QApplication>
#include <QCheckBox>
#include <QCoreApplication>
#include <QEvent>
#include <QFontMetrics>
#include <QGridLayout>
#include <QLocale>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSlider>

#include <algorithm>
#include <cmath>

namespace {

// What a window manager puts beside a title: its buttons and margins.
constexpr int kTitleBarDecorations = 110;

// The field of the editing state with this name if it is a `Value`, else null.
template <typename Value>
Value* fieldOf(EditingState& state, const char* name)
{
    Value* found = nullptr;
    state.forEachField([&](const char* field, auto& value) {
        if constexpr (std::is_same_v<std::decay_t<decltype(value)>, Value>)
            if (qstrcmp(field, name) == 0)
                found = &value;
    });
    return found;
}

template <typename Value>
Value startingValueOf(const char* name)
{
    EditingState starting;
    return *fieldOf<Value>(starting, name);
}

} // namespace

EffectPanel::EffectPanel(PanelContext& context, const EffectInfo& effect)
    : EffectPanel(context, effect, Designed{})
{
    build();
    bind();
}

// A part of the main window until the window docks it beside the preview.
EffectPanel::EffectPanel(PanelContext& context, const EffectInfo& effect, Designed)
    : QWidget(context.mainWindow)
    , context_(context)
    , effect_(effect)
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

// The controls of the description, one row each: a box across the panel,
// or a caption, the control and a slider's value.
void EffectPanel::build()
{
    auto* grid = new QGridLayout(this);
    for (const PanelControl& c : effect_.panel().controls) {
        const int row = grid->rowCount();
        QWidget* control = nullptr;
        if (c.kind == ControlKind::Apply || c.kind == ControlKind::Mode || c.kind == ControlKind::Toggle)
            grid->addWidget(control = new QCheckBox(this), row, 0, 1, 3);
        else {
            auto* label = new QLabel(this);
            label->setObjectName(c.caption);
            grid->addWidget(label, row, 0);
            if (c.kind == ControlKind::Slider) {
                auto* slider = new QSlider(Qt::Horizontal, this);
                slider->setMinimumWidth(120); // with caption and value, a panel fits a third of an 800-pixel window
                auto* value = new QLabel(this);
                value->setObjectName(c.value);
                value->setMinimumWidth(40);
                value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
                grid->addWidget(value, row, 2);
                control = slider;
            } else {
                control = new ColourWell(this);
            }
            grid->addWidget(control, row, 1);
        }
        control->setObjectName(c.control);
    }
}

void EffectPanel::bind()
{
    setWindowTitle(labels().text(effect_.panel().title));
    for (const PanelControl& c : effect_.panel().controls) {
        switch (c.kind) {
        case ControlKind::Apply: bindApply(c); break;
        case ControlKind::Mode: bindMode(c); break;
        case ControlKind::Slider: bindSlider(c); break;
        case ControlKind::Colour: bindColour(c); break;
        case ControlKind::Toggle: bindToggle(c); break;
        }
        if (c.caption && c.label[0]) {
            auto* label = findChild<QLabel*>(c.caption);
            label->setText(caption(c));
            label->setWordWrap(true); // a long caption takes two lines, not the photo's width
        }
        if (c.meaning)
            for (QWidget* widget : {findChild<QWidget*>(c.control), c.caption ? findChild<QWidget*>(c.caption) : nullptr})
                if (widget)
                    widget->setToolTip(QCoreApplication::translate("Effects", c.meaning));
    }
}

QString EffectPanel::caption(const PanelControl& c) const
{
    const QString first = labels().text(c.label[0]);
    return c.label[1] ? QString("%1 - %2").arg(first, labels().text(c.label[1])) : first;
}

void EffectPanel::changed(const char* field)
{
    context_.document.changed(Change::of(field));
}

const PanelControl* EffectPanel::modeControl() const
{
    for (const PanelControl& c : effect_.panel().controls)
        if (c.kind == ControlKind::Mode)
            return &c;
    return nullptr;
}

void EffectPanel::enableResting(bool enabled)
{
    if (const PanelControl* mode = modeControl())
        for (const char* name : mode->rests)
            findChild<QWidget*>(name)->setEnabled(enabled);
}

void EffectPanel::showState(bool writingSlidersToo)
{
    for (const Show& s : shows_)
        if (!s.writesOnly || writingSlidersToo) {
            const QSignalBlocker quiet(s.control);
            s.show();
        }
}

void EffectPanel::addShow(QWidget* control, std::function<void()> show, bool writesOnly)
{
    shows_.push_back({control, std::move(show), writesOnly});
    if (!writesOnly) {
        const QSignalBlocker quiet(control);
        shows_.back().show();
    }
}

// The effect's switch. Leaving the effect ends its mouse mode: the mode's
// box unticks, and it and the values it rests follow the switch.
void EffectPanel::bindApply(const PanelControl& c)
{
    auto* box = findChild<QCheckBox*>(c.control);
    box->setText(windowTitle());
    bool& on = state().*effect_.effectSwitch;
    addShow(box, [box, &on] { box->setChecked(on); });
    connect(box, &QCheckBox::toggled, this, [this, c, &on](bool checked) {
        on = checked;
        if (const PanelControl* mode = modeControl()) {
            *fieldOf<bool>(state(), mode->field) = false;
            auto* modeBox = findChild<QCheckBox*>(mode->control);
            const QSignalBlocker quiet(modeBox);
            modeBox->setChecked(false);
            modeBox->setEnabled(checked);
            enableResting(checked);
        }
        for (const PanelControl& toggle : effect_.panel().controls)
            if (toggle.kind == ControlKind::Toggle && !checked)
                *fieldOf<bool>(state(), toggle.field) = false;
        changed(c.field);
        showState();
    });
}

// A choice of the window's own, such as what the preview outlines: it
// needs the effect on, and ends with it.
void EffectPanel::bindToggle(const PanelControl& c)
{
    auto* box = findChild<QCheckBox*>(c.control);
    box->setText(caption(c));
    bool& chosen = *fieldOf<bool>(state(), c.field);
    const bool& on = state().*effect_.effectSwitch;
    addShow(box, [box, &chosen, &on] {
        box->setChecked(chosen && on);
        box->setEnabled(on);
    });
    connect(box, &QCheckBox::toggled, this, [this, c, &chosen](bool checked) {
        chosen = checked;
        changed(c.field);
    });
}

// A mouse mode needs its effect on (opening the panel ends a mode whose
// effect is off), the values rest while it is on, and it cannot start while
// another effect's mode is on: the box may tick, the mode stays off.
void EffectPanel::bindMode(const PanelControl& c)
{
    auto* box = findChild<QCheckBox*>(c.control);
    box->setText(caption(c));
    bool& mode = *fieldOf<bool>(state(), c.field);
    const bool& on = state().*effect_.effectSwitch;
    if (!on)
        mode = false;
    addShow(box, [this, box, &mode, &on] {
        box->setChecked(mode);
        box->setEnabled(on);
        enableResting(on && !mode);
    });
    connect(box, &QCheckBox::toggled, this, [this, c, &mode](bool checked) {
        if (anotherModeIsOn(state(), c.field))
            return;
        mode = checked;
        enableResting(!checked);
        changed(c.field);
    });
}

// A number through its slider: the range and the scale (the value itself,
// or hundredths of it) come from the settings list.
void EffectPanel::bindSlider(const PanelControl& c)
{
    auto* slider = findChild<QSlider*>(c.control);
    auto* value = findChild<QLabel*>(c.value);
    const SettingRange* range = settingRange(c.field);
    const double perUnit = range->slider == SliderScale::Hundredths ? 100 : 1;
    slider->setRange(int(std::lround(range->min * perUnit)), int(std::lround(range->max * perUnit)));
    // A float or a count: hundredths are rounded, a value as is truncated.
    float* real = fieldOf<float>(state(), c.field);
    std::uint64_t* count = fieldOf<std::uint64_t>(state(), c.field);
    const std::function<int()> shown = [real, count, perUnit] {
        return real ? (perUnit == 100 ? int(std::lround(*real * 100)) : int(*real)) : int(*count);
    };
    if (c.writesOnly) // starts where the setting starts, whatever the state says
        slider->setValue(real ? int(startingValueOf<float>(c.field)) : int(startingValueOf<std::uint64_t>(c.field)));
    // The position, or the value in its units ("0.4 %").
    const auto showValue = [value, unit = c.unit, perUnit](int position) {
        if (unit)
            value->setText(QLocale().toString(position / perUnit) + QChar(0x202F) + QString::fromUtf8(unit));
        else
            value->setNum(position);
    };
    addShow(slider, [slider, shown, showValue] {
        slider->setValue(shown());
        showValue(slider->value());
    }, c.writesOnly);
    showValue(slider->value());
    connect(slider, &QSlider::valueChanged, this, [this, c, real, count, perUnit, showValue](int position) {
        if (real)
            *real = float(position) / float(perUnit);
        else
            *count = std::uint64_t(position);
        showValue(position);
        changed(c.field);
    });
}

void EffectPanel::bindColour(const PanelControl& c)
{
    auto* well = findChild<ColourWell*>(c.control);
    RgbaColor& colour = *fieldOf<RgbaColor>(state(), c.field);
    addShow(well, [well, &colour] { well->setColour(colour); });
    connect(well, &ColourWell::colourChosen, this, [this, c, &colour](const RgbaColor& chosen) {
        colour = chosen;
        changed(c.field);
    });
}

void EffectPanel::showChangedOnPhoto(const char*)
{
    showState();
}

void EffectPanel::offerDefaults()
{
    auto* button = new QPushButton(tr("Defaults"), this);
    button->setObjectName("buttonDefaults");
    if (auto* grid = qobject_cast<QGridLayout*>(layout()))
        grid->addWidget(button, grid->rowCount(), 0, 1, grid->columnCount(), Qt::AlignLeft);
    else if (layout())
        layout()->addWidget(button);
    connect(button, &QPushButton::clicked, this, [this] {
        context_.document.restoreDefaultsOf(effect_.effectSwitch, tr("%1 Defaults").arg(labels().text(effect_.row.label)));
        showState(true);
    });
}
