#pragma once

#include "DesignedPanel.h"
#include "ui_Window_Cheek.h"

// The panel of cheek blush: Apply, the mode in which the mouse moves and
// resizes the blush areas, the outer colours of each side and the make-up
// colour (chosen or picked from the photo), transparency, a blur per side
// and the two circles that set where each blush is centred.
class Window_Cheek : public DesignedPanel<Ui::Window_Cheek> {
    Q_OBJECT

public:
    explicit Window_Cheek(PanelContext& context);

    // Picking: the next click in the preview takes the colour from the photo.
    void OnPickColor_1();
    void OnPickColor_2();
    void OnPickColor_1_Right();
    // A colour was picked into the state: the wells show it (the preview
    // redraws after a pick anyway).
    void Update_Color_1_From_Pick_Color();
    void Update_Color_2_From_Pick_Color();
    void Update_Color_1_Right_From_Pick_Color();
    void showChangedOnPhoto(const char* field) override;
    // The controls the repositioning mode rests, in their stated order.
    void Enable_Color_Controls(bool enabled);

private:
    void startPicking(int index);
};
