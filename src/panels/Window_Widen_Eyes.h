#pragma once

#include "DesignedPanel.h"
#include "ui_Window_Widen_Eyes.h"

// The panel of eye widening: Apply and level in percent.
class Window_Widen_Eyes : public DesignedPanel<Ui::Window_Widen_Eyes> {
    Q_OBJECT

public:
    explicit Window_Widen_Eyes(PanelContext& context);
};
