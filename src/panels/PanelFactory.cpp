#include "PanelFactory.h"

#include "Window_Cheek.h"
#include "Window_Eye_Shadow.h"
#include "Window_Eyes_Color.h"
#include "Window_Eyes_Darken.h"
#include "Window_Face_Skin_Smooth.h"
#include "Window_Lips_Color.h"
#include "Window_Remove_Wrinkles.h"
#include "Window_Whiten_Teeth.h"
#include "Window_Widen_Eyes.h"

namespace {

template <typename Panel>
EffectPanel* make(PanelContext& context)
{
    return new Panel(context);
}

using S = EditingState;

const std::pair<bool S::*, EffectPanel* (*)(PanelContext&)> kDesigned[] = {
    {&S::b_Face_Skin_Smooth, make<Window_Face_Skin_Smooth>}, {&S::b_Remove_Wrinkles, make<Window_Remove_Wrinkles>},
    {&S::b_Apply_Cheeks, make<Window_Cheek>},                {&S::b_Color_Eyes, make<Window_Eyes_Color>},
    {&S::b_Widen_Eyes, make<Window_Widen_Eyes>},             {&S::b_Eye_Eyeshadow, make<Window_Eye_Shadow>},
    {&S::b_Eyes_Darken, make<Window_Eyes_Darken>},           {&S::b_Color_Lips, make<Window_Lips_Color>},
    {&S::b_Whiten_Teeth, make<Window_Whiten_Teeth>},
};

} // namespace

EffectPanel* makePanel(const EffectInfo& effect, PanelContext& context)
{
    for (const auto& [effectSwitch, designed] : kDesigned)
        if (effectSwitch == effect.effectSwitch)
            return designed(context);
    return new EffectPanel(context, effect);
}
