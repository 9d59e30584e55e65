#include "EditingState.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace {

// Moves every field away from its default: switches and modes on, numbers
// up, colours and points to values no default has.
struct AwayFromDefault {
    void operator()(const char*, bool& v) { v = !v; }
    void operator()(const char*, std::uint64_t& v) { v += 7; }
    void operator()(const char*, std::int32_t& v) { v = 2; }
    void operator()(const char*, float& v) { v += 0.37f; }
    void operator()(const char*, RgbaColor& v) { v = {v.g * 0.5f + 0.1f, 0.6f, v.r * 0.3f + 0.2f, 0.5f}; }
    void operator()(const char*, QPointF& v) { v += QPointF(3, 4); }
};

} // namespace

TEST(EditingState, ResetSwitchesEveryEffectOffAndKeepsEveryOtherField)
{
    EditingState s;
    s.forEachField(AwayFromDefault());
    EditingState expected = s;

    s.Reset_Variables();

    expected.b_Face_Skin_Smooth = expected.b_Remove_Wrinkles = expected.b_Color_Eyes = false;
    expected.b_Widen_Eyes = expected.b_Eye_Eyeshadow = expected.b_Eyes_Darken = false;
    expected.b_Apply_Cheeks = expected.b_Color_Lips = expected.b_Whiten_Teeth = false;
    EXPECT_TRUE(s == expected) << "only the nine switches may change";
    EXPECT_TRUE(s.b_Activated_Cheeks_Reposition) << "an interaction mode survives a new photo";
    EXPECT_EQ(s.u_Face_Skin_Smooth_Level, 17u);
}
