#pragma once

#include "DesignedPanel.h"
#include "ui_Window_Eyes_Darken.h"

#include <memory>

// The panel of under-eye darkening: Apply, the mode in which the mouse
// reshapes the rings, transparency, line width, blur, and Reset.
class Window_Eyes_Darken : public DesignedPanel<Ui::Window_Eyes_Darken> {
    Q_OBJECT

public:
    explicit Window_Eyes_Darken(PanelContext& context);

    void OnApplyDarkenEyes(bool on);
    void OnActivateDarkenEyesReposition(bool on);
    // The rings become the eye outlines again.
    void OnReset();

private:
    void Enable_Color_Controls(bool enabled);

    std::unique_ptr<ModeControls> modes_;
};
