#pragma once

#include "DesignedPanel.h"
#include "ui_Window_Face_Skin_Smooth.h"

// The panel of skin smoothing: Apply, level and radius.
class Window_Face_Skin_Smooth : public DesignedPanel<Ui::Window_Face_Skin_Smooth> {
    Q_OBJECT

public:
    explicit Window_Face_Skin_Smooth(PanelContext& context);
};
