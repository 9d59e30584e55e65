#pragma once

#include "DesignedPanel.h"
#include "ui_Window_Eyes_Darken.h"

// The panel of under-eye darkening: Apply, the mode in which the mouse
// reshapes the rings, transparency, line width, blur, and Reset.
class Window_Eyes_Darken : public DesignedPanel<Ui::Window_Eyes_Darken> {
    Q_OBJECT

public:
    explicit Window_Eyes_Darken(PanelContext& context);

    // The rings become the eye outlines again.
    void OnReset();
    // The controls the repositioning mode rests; Reset stays.
    void Enable_Color_Controls(bool enabled);
};
