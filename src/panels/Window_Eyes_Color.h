#pragma once

#include "EffectPanel.h"

#include <memory>

namespace Ui {
class Window_Eyes_Color;
}

// The panel of eye colour: Apply, colour and transparency.
class Window_Eyes_Color : public EffectPanel {
    Q_OBJECT

public:
    explicit Window_Eyes_Color(AppDelegate& app);
    ~Window_Eyes_Color() override;

    const Ui::Window_Eyes_Color& ui() const { return *ui_; }

private:
    std::unique_ptr<Ui::Window_Eyes_Color> ui_;
};
