#pragma once

#include "DesignedPanel.h"
#include "ui_Window_Whiten_Teeth.h"

// The panel of teeth whitening: Apply only.
class Window_Whiten_Teeth : public DesignedPanel<Ui::Window_Whiten_Teeth> {
    Q_OBJECT

public:
    explicit Window_Whiten_Teeth(PanelContext& context);
};
