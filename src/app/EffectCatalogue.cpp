#include "EffectCatalogue.h"

#include "Window_Cheek.h"
#include "Window_Eye_Shadow.h"
#include "Window_Eyes_Color.h"
#include "Window_Eyes_Darken.h"
#include "Window_Face_Skin_Smooth.h"
#include "Window_Lips_Color.h"
#include "Window_Remove_Wrinkles.h"
#include "Window_Whiten_Teeth.h"
#include "Window_Widen_Eyes.h"

#include <algorithm>

namespace {

template <typename Panel>
EffectPanel* make(PanelContext& context)
{
    return new Panel(context);
}

using L = LocalisedLabels;
using S = EditingState;

const EffectEntry kCatalogue[] = {
    {Category::Face, &L::s_IDD_SMOOTH_SKIN, &S::b_Face_Skin_Smooth, make<Window_Face_Skin_Smooth>, true},
    {Category::Face, &L::s_IDD_WRINKLE_REMOVER, &S::b_Remove_Wrinkles, make<Window_Remove_Wrinkles>, true},
    {Category::Face, &L::s_IDD_CHEEKS, &S::b_Apply_Cheeks, make<Window_Cheek>, false},
    {Category::Eye, &L::s_IDD_COLOR_EYES, &S::b_Color_Eyes, make<Window_Eyes_Color>, true},
    {Category::Eye, &L::s_IDD_WIDEN_EYES, &S::b_Widen_Eyes, make<Window_Widen_Eyes>, true},
    {Category::Eye, &L::s_IDD_EYELID, &S::b_Eye_Eyeshadow, make<Window_Eye_Shadow>, true},
    {Category::Eye, &L::s_IDD_DARKEN_EYES, &S::b_Eyes_Darken, make<Window_Eyes_Darken>, false},
    {Category::Mouth, &L::s_IDD_LIPS, &S::b_Color_Lips, make<Window_Lips_Color>, true},
    {Category::Mouth, &L::s_IDD_WHITE_TEETH, &S::b_Whiten_Teeth, make<Window_Whiten_Teeth>, true},
};

} // namespace

std::span<const EffectEntry> effectCatalogue()
{
    return kCatalogue;
}

const EffectEntry* effectWithSwitch(bool EditingState::*effectSwitch)
{
    const auto found = std::find_if(std::begin(kCatalogue), std::end(kCatalogue),
                                    [&](const EffectEntry& effect) { return effect.effectSwitch == effectSwitch; });
    return found == std::end(kCatalogue) ? nullptr : found;
}

std::vector<const EffectEntry*> effectsInCloseOrder()
{
    std::vector<const EffectEntry*> effects;
    for (bool EditingState::*effectSwitch : switchesInCloseOrder())
        if (const EffectEntry* effect = effectWithSwitch(effectSwitch))
            effects.push_back(effect);
    return effects;
}

std::vector<const EffectEntry*> effectsOf(Category category)
{
    std::vector<const EffectEntry*> effects;
    for (const EffectEntry& effect : kCatalogue)
        if (effect.category == category)
            effects.push_back(&effect);
    return effects;
}

