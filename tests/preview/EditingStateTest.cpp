#include "EditingState.h"

#include <gtest/gtest.h>

#include <cstdint>

TEST(EditingState, StartsWithTheExactDefaults)
{
    const EditingState s;
    EXPECT_FALSE(s.b_Face_Skin_Smooth || s.b_Remove_Wrinkles || s.b_Color_Eyes || s.b_Widen_Eyes
                 || s.b_Eye_Eyeshadow || s.b_Eyes_Darken || s.b_Apply_Cheeks || s.b_Color_Lips
                 || s.b_Whiten_Teeth);
    EXPECT_EQ(s.u_Face_Skin_Smooth_Level, 10u);
    EXPECT_EQ(s.u_Face_Skin_Smooth_Radius, 10u);
    EXPECT_EQ(s.u_Remove_Wrinkles_Level, 4u);
    EXPECT_EQ(s.u_Widen_Eyes_Level, 0u);
    const RgbaColor blue{0, 0, 1, 1};
    EXPECT_EQ(s.color_Color_Eyes, blue);
    EXPECT_EQ(s.color_Color_Lips, blue);
    EXPECT_EQ(s.color_Eyeshadow, blue);
    EXPECT_EQ(s.f_Color_Eyes_Transparency, 0.2f);
    EXPECT_EQ(s.f_Color_Lips_Transparency, 0.2f);
    EXPECT_EQ(s.f_Color_Eyeshadow_Transparency, 0.2f);
    EXPECT_EQ(s.f_Eyeshadow_Blur_Level, 7.0f);
    EXPECT_EQ(s.f_Darken_Eyes_Transparency, 0.0f);
    EXPECT_EQ(s.f_Darken_Eyes_Line_Width, 1.0f);
    EXPECT_EQ(s.f_Darken_Eyes_Blur_Level, 1.0f);
    EXPECT_EQ(s.color_Color_Cheeks_1, (RgbaColor{1, 0.5f, 0, 1}));
    EXPECT_EQ(s.color_Color_Cheeks_1_Right, (RgbaColor{1, 0.5f, 0, 1}));
    EXPECT_EQ(s.color_Color_Cheeks_2, (RgbaColor{1, 0, 1, 1}));
    EXPECT_EQ(s.f_Color_Cheeks_Transparency, 0.8f);
    EXPECT_EQ(s.f_Cheeks_Blur_Level_Left, 4.0f);
    EXPECT_EQ(s.f_Cheeks_Blur_Level_Right, 4.0f);
    EXPECT_EQ(s.pt_MakeUp_Center_Left, QPointF(20, 20));
    EXPECT_EQ(s.pt_MakeUp_Center_Right, QPointF(80, 20));
    EXPECT_FALSE(s.b_Activated_Cheeks_Reposition || s.b_Activated_Darken_Eyes_Reposition
                 || s.b_Cheeks_Picking_Color);
    EXPECT_EQ(s.i_Picking_Color_Index, 0);
}

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
