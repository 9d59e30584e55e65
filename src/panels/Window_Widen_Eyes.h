#pragma once

#include "EffectPanel.h"

#include <memory>

namespace Ui {
class Window_Widen_Eyes;
}

// The panel of eye widening: Apply and level in percent.
class Window_Widen_Eyes : public EffectPanel {
    Q_OBJECT

public:
    explicit Window_Widen_Eyes(AppDelegate& app);
    ~Window_Widen_Eyes() override;

    const Ui::Window_Widen_Eyes& ui() const { return *ui_; }

private:
    std::unique_ptr<Ui::Window_Widen_Eyes> ui_;
};
