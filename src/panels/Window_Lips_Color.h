#pragma once

#include "DesignedPanel.h"
#include "ui_Window_Lips_Color.h"

// The panel of lip colour: Apply, colour and transparency.
class Window_Lips_Color : public DesignedPanel<Ui::Window_Lips_Color> {
    Q_OBJECT

public:
    explicit Window_Lips_Color(PanelContext& context);
};
