#include "Window_Cheek.h"

using S = EditingState;

Window_Cheek::Window_Cheek(PanelContext& context)
    : DesignedPanel(context)
{
    EditingState& s = state();
    ui_->viewCircleCenterLeft->b_Left = true;
    ui_->viewCircleCenterRight->b_Left = false;
    for (ViewCircleCenter* circle : {ui_->viewCircleCenterLeft, ui_->viewCircleCenterRight})
        circle->setState(&s, [this] { redraw(); });
    modes_ = std::make_unique<ModeControls>(ModeControls{
        ui_->checkApply, ui_->checkActivateCheekReposition, s.b_Apply_Cheeks, s.b_Activated_Cheeks_Reposition,
        s.b_Activated_Darken_Eyes_Reposition, [this](bool enabled) { Enable_Color_Controls(enabled); }});
    bindMode(*modes_);

    bindColour(ui_->color_1, s.color_Color_Cheeks_1);
    bindColour(ui_->color_1_Right, s.color_Color_Cheeks_1_Right);
    bindColour(ui_->color_2, s.color_Color_Cheeks_2);
    bindSetting<&S::f_Color_Cheeks_Transparency>(ui_->slider_Transparency, ui_->label_Transparency_Value);
    // The blur sliders start at the blur's starting value and only write
    // the state.
    bindWritingSetting<&S::f_Cheeks_Blur_Level_Left>(ui_->slider_Blur_Left, ui_->labelBlurLeftValue);
    bindWritingSetting<&S::f_Cheeks_Blur_Level_Right>(ui_->slider_Blur_Right, ui_->labelBlurRightValue);

    const LocalisedLabels& l = labels();
    setWindowTitle(l.s_IDD_CHEEKS);
    ui_->checkApply->setText(l.s_IDD_CHEEKS);
    ui_->checkActivateCheekReposition->setText(l.s_IDD_EDIT_SIZE_POSITION);
    ui_->label_Color_2->setText(l.s_IDD_EDIT_COLOR_MAKEUP);
    ui_->label_Transparency->setText(l.s_IDD_TRANSPARENCY);
    ui_->label_Color_1->setText(QString("%1 - %2").arg(l.s_IDD_LEFT, l.s_IDD_EDIT_COLOR_AROUND));
    ui_->label_Color_1_Right->setText(QString("%1 - %2").arg(l.s_IDD_RIGHT, l.s_IDD_EDIT_COLOR_AROUND));
    ui_->labelBlurLeft->setText(QString("%1 - %2").arg(l.s_IDD_LEFT, l.s_IDD_BLUR));
    ui_->labelBlurRight->setText(QString("%1 - %2").arg(l.s_IDD_RIGHT, l.s_IDD_BLUR));

    connect(ui_->checkApply, &QCheckBox::toggled, this, &Window_Cheek::OnApplyCheek);
    connect(ui_->checkActivateCheekReposition, &QCheckBox::toggled, this, &Window_Cheek::OnActivateCheekReposition);
    connect(ui_->btn_Pick_Color_1, &QPushButton::clicked, this, &Window_Cheek::OnPickColor_1);
    connect(ui_->btn_Pick_Color_2, &QPushButton::clicked, this, &Window_Cheek::OnPickColor_2);
    connect(ui_->btn_Pick_Color_1_Right, &QPushButton::clicked, this, &Window_Cheek::OnPickColor_1_Right);
}

void Window_Cheek::Enable_Color_Controls(bool enabled)
{
    for (QWidget* control : std::initializer_list<QWidget*>{ui_->btn_Pick_Color_1, ui_->color_1,
                                                            ui_->btn_Pick_Color_1_Right, ui_->color_1_Right,
                                                            ui_->btn_Pick_Color_2, ui_->color_2,
                                                            ui_->slider_Transparency})
        control->setEnabled(enabled);
}

void Window_Cheek::OnApplyCheek(bool on)
{
    applyWithMode(*modes_, on);
}

void Window_Cheek::OnActivateCheekReposition(bool on)
{
    switchMode(*modes_, on);
}

void Window_Cheek::startPicking(int index)
{
    state().b_Cheeks_Picking_Color = true;
    state().i_Picking_Color_Index = index;
    context_.showColourPicker();
    // Docked beside the preview the panel leaves the photo free; pulled out
    // and floating it may cover the cheek to be clicked.
    if (window() != context_.mainWindow)
        window()->hide();
}

void Window_Cheek::OnPickColor_1() { startPicking(1); }
void Window_Cheek::OnPickColor_2() { startPicking(2); }
void Window_Cheek::OnPickColor_1_Right() { startPicking(3); }

void Window_Cheek::Update_Color_1_From_Pick_Color() { showState(); }
void Window_Cheek::Update_Color_2_From_Pick_Color() { showState(); }
void Window_Cheek::Update_Color_1_Right_From_Pick_Color() { showState(); }
