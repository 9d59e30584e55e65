#pragma once

#include "EffectPanel.h"

#include <memory>

namespace Ui {
class Window_Whiten_Teeth;
}

// The panel of teeth whitening: Apply only.
class Window_Whiten_Teeth : public EffectPanel {
    Q_OBJECT

public:
    explicit Window_Whiten_Teeth(AppDelegate& app);
    ~Window_Whiten_Teeth() override;

    const Ui::Window_Whiten_Teeth& ui() const { return *ui_; }

private:
    std::unique_ptr<Ui::Window_Whiten_Teeth> ui_;
};
