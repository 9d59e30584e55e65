#include "EffectOrder.h"

#include "AllEffects.h"
#include "Compositor.h"
#include "EditingState.h"

#include <algorithm>

namespace {

// What an effect's step function takes: its settings, and what it keeps
// between pictures when it keeps anything.
template <typename Fn>
struct StepOf;
template <typename Settings, typename Memos>
struct StepOf<void (*)(EffectPass&, const Settings&, Memos&)> {
    using Kept = Memos;
};
template <typename Settings>
struct StepOf<void (*)(EffectPass&, const Settings&)> {
    using Kept = void;
};

// An effect's step as a step of the compositor.
template <auto paint>
void step(CompositorPass& pass)
{
    using Kept = typename StepOf<decltype(paint)>::Kept;
    if constexpr (std::is_void_v<Kept>)
        paint(pass.effect, pass.state);
    else
        paint(pass.effect, pass.state, std::get<Kept>(pass.memos.of));
}

using S = EditingState;

const CompositorStep kSteps[] = {
    {"heal blemishes", {&S::b_Heal_Blemishes}, step<&HealBlemishes::heal>,
     "first, as retouchers heal: every later step reads the healed photo, so a healed spot stays healed under "
     "every effect"},
    {"natural skin", {&S::b_Natural_Skin}, step<&NaturalSkin::even>,
     "after the healing, so it evens healed skin, and before every colour: the effects paint on the evened skin"},
    {"photo and skin smoothing", {}, step<&SkinSmoothing::startFromPhoto>,
     "every effect paints on the photo; the smoothed face covers the whole picture, so it is the base",
     &S::b_Face_Skin_Smooth, true},
    {"lips mask", {&S::b_Color_Lips}, step<&LipColour::paintMask>,
     "a grey, brighter copy of the lips under their colour keeps their light and shade"},
    {"eye colour", {&S::b_Color_Eyes}, step<&EyeColour::paintColour>,
     "the grey iris and the colour over it; the eye colour finishing gives the bright parts back"},
    {"lips colour", {&S::b_Color_Lips}, step<&LipColour::paintColour>, "over the lips mask"},
    {"under-eye darkening", {&S::b_Eyes_Darken}, step<&UnderEyeDarkening::darken>,
     "on the face as it is before the eyes are finished"},
    {"mouth interior", {}, step<&TeethWhitening::restoreMouthInterior>,
     "the untouched or whitened teeth cover what the lips steps painted inside an open mouth", &S::b_Whiten_Teeth},
    {"eye colour finishing", {&S::b_Color_Eyes}, step<&EyeColour::finish>,
     "needs the colour fill of its own earlier step; restores the whites and reflections"},
    {"wrinkle removal", {&S::b_Remove_Wrinkles}, step<&WrinkleRemoval::removeWrinkles>,
     "lays the blurred skin over everything painted on the face"},
    {"widen eyes", {&S::b_Widen_Eyes}, step<&WidenEyes::widen>, "stretches the eyes as they now look, colour included"},
    {"eye shadow", {&S::b_Eye_Eyeshadow}, step<&EyeShadow::paint>, "on the lids of the widened eyes"},
    {"cheeks", {&S::b_Apply_Cheeks}, step<&CheekBlush::paint>,
     "blush over the finished face, each side with its handles before the next"},
    {"under-eye handles", {&S::b_Eyes_Darken, &S::b_Activated_Darken_Eyes_Reposition},
     step<&UnderEyeDarkening::paintHandles>, "last, so nothing covers the handles the mouse aims at"},
};

} // namespace

std::span<const CompositorStep> compositorSteps()
{
    return kSteps;
}

bool CompositorStep::draws(bool EditingState::*effectSwitch) const
{
    return chooses == effectSwitch || std::find(switches.begin(), switches.end(), effectSwitch) != switches.end();
}

bool CompositorStep::runs(const EditingState& state) const
{
    for (bool EditingState::*on : switches)
        if (on && !(state.*on))
            return false;
    return true;
}
