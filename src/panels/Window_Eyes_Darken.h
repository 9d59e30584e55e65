#pragma once

#include "EffectPanel.h"

#include <memory>

namespace Ui {
class Window_Eyes_Darken;
}

// The panel of under-eye darkening: Apply, the mode in which the mouse
// reshapes the rings, transparency, line width, blur, and Reset.
class Window_Eyes_Darken : public EffectPanel {
    Q_OBJECT

public:
    explicit Window_Eyes_Darken(AppDelegate& app);
    ~Window_Eyes_Darken() override;

    const Ui::Window_Eyes_Darken& ui() const { return *ui_; }

    void OnApplyDarkenEyes(bool on);
    void OnActivateDarkenEyesReposition(bool on);
    // The rings become the eye outlines again.
    void OnReset();

private:
    void Enable_Color_Controls(bool enabled);

    std::unique_ptr<Ui::Window_Eyes_Darken> ui_;
    std::unique_ptr<ModeControls> modes_;
};
