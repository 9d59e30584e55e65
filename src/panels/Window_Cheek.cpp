#include "Window_Cheek.h"

Window_Cheek::Window_Cheek(PanelContext& context)
    : DesignedPanel(context, &EditingState::b_Apply_Cheeks)
{
    ui_->viewCircleCenterLeft->b_Left = true;
    ui_->viewCircleCenterRight->b_Left = false;
    for (ViewCircleCenter* circle : {ui_->viewCircleCenterLeft, ui_->viewCircleCenterRight}) {
        const char* field = circle->b_Left ? "pt_MakeUp_Center_Left" : "pt_MakeUp_Center_Right";
        circle->setState(&state(), [this, field] { changed(field); });
        addShow(circle, [circle] { circle->update(); });
    }
    connect(ui_->btn_Pick_Color_1, &QPushButton::clicked, this, &Window_Cheek::OnPickColor_1);
    connect(ui_->btn_Pick_Color_2, &QPushButton::clicked, this, &Window_Cheek::OnPickColor_2);
    connect(ui_->btn_Pick_Color_1_Right, &QPushButton::clicked, this, &Window_Cheek::OnPickColor_1_Right);
}

// A colour picked from the photo: the well it went to shows it.
void Window_Cheek::showChangedOnPhoto(const char* field)
{
    using Update = void (Window_Cheek::*)();
    const std::pair<const char*, Update> updates[] = {
        {"color_Color_Cheeks_1", &Window_Cheek::Update_Color_1_From_Pick_Color},
        {"color_Color_Cheeks_2", &Window_Cheek::Update_Color_2_From_Pick_Color},
        {"color_Color_Cheeks_1_Right", &Window_Cheek::Update_Color_1_Right_From_Pick_Color}};
    for (const auto& [name, update] : updates)
        if (qstrcmp(name, field) == 0)
            (this->*update)();
}

void Window_Cheek::Enable_Color_Controls(bool enabled)
{
    enableResting(enabled);
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
