#pragma once

#include "DesignedPanel.h"
#include "ui_Window_Eye_Shadow.h"

// The panel of eye shadow: Apply, colour, transparency and blur (slider in hundredths).
class Window_Eye_Shadow : public DesignedPanel<Ui::Window_Eye_Shadow> {
    Q_OBJECT

public:
    explicit Window_Eye_Shadow(PanelContext& context);
};
