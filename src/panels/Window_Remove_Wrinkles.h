#pragma once

#include "DesignedPanel.h"
#include "ui_Window_Remove_Wrinkles.h"

// The panel of wrinkle removal: Apply and level (the blur radius).
class Window_Remove_Wrinkles : public DesignedPanel<Ui::Window_Remove_Wrinkles> {
    Q_OBJECT

public:
    explicit Window_Remove_Wrinkles(PanelContext& context);
};
