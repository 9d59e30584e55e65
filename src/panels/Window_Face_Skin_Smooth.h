#pragma once

#include "EffectPanel.h"

#include <memory>

namespace Ui {
class Window_Face_Skin_Smooth;
}

// The panel of skin smoothing: Apply, level and radius.
class Window_Face_Skin_Smooth : public EffectPanel {
    Q_OBJECT

public:
    explicit Window_Face_Skin_Smooth(AppDelegate& app);
    ~Window_Face_Skin_Smooth() override;

    const Ui::Window_Face_Skin_Smooth& ui() const { return *ui_; }

private:
    std::unique_ptr<Ui::Window_Face_Skin_Smooth> ui_;
};
