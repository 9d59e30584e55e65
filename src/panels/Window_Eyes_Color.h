#pragma once

#include "DesignedPanel.h"
#include "ui_Window_Eyes_Color.h"

// The panel of eye colour: Apply, colour and transparency.
class Window_Eyes_Color : public DesignedPanel<Ui::Window_Eyes_Color> {
    Q_OBJECT

public:
    explicit Window_Eyes_Color(PanelContext& context);
};
