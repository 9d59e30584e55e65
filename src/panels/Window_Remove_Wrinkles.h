#pragma once

#include "EffectPanel.h"

#include <memory>

namespace Ui {
class Window_Remove_Wrinkles;
}

// The panel of wrinkle removal: Apply and level (the blur radius).
class Window_Remove_Wrinkles : public EffectPanel {
    Q_OBJECT

public:
    explicit Window_Remove_Wrinkles(AppDelegate& app);
    ~Window_Remove_Wrinkles() override;

    const Ui::Window_Remove_Wrinkles& ui() const { return *ui_; }

private:
    std::unique_ptr<Ui::Window_Remove_Wrinkles> ui_;
};
