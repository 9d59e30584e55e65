#pragma once

#include "EffectPanel.h"

#include <memory>

namespace Ui {
class Window_Lips_Color;
}

// The panel of lip colour: Apply, colour and transparency.
class Window_Lips_Color : public EffectPanel {
    Q_OBJECT

public:
    explicit Window_Lips_Color(AppDelegate& app);
    ~Window_Lips_Color() override;

    const Ui::Window_Lips_Color& ui() const { return *ui_; }

private:
    std::unique_ptr<Ui::Window_Lips_Color> ui_;
};
