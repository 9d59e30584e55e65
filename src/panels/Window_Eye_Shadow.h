#pragma once

#include "EffectPanel.h"

#include <memory>

namespace Ui {
class Window_Eye_Shadow;
}

// The panel of eye shadow: Apply, colour, transparency and blur (slider in hundredths).
class Window_Eye_Shadow : public EffectPanel {
    Q_OBJECT

public:
    explicit Window_Eye_Shadow(AppDelegate& app);
    ~Window_Eye_Shadow() override;

    const Ui::Window_Eye_Shadow& ui() const { return *ui_; }

private:
    std::unique_ptr<Ui::Window_Eye_Shadow> ui_;
};
