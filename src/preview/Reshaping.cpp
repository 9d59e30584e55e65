#include "Reshaping.h"

Reshaping Reshaping::of(const FaceRegions& r)
{
    return {r.rect_Cheek_Left_Area_To_Paint, r.rect_Cheek_Right_Area_To_Paint, r.array_Eye_Darken_Left_Points,
            r.array_Eye_Darken_Right_Points,  r.path_Eye_Darken_Left,           r.path_Eye_Darken_Right};
}

void Reshaping::resetUnderEyeRings(const FaceRegions& regions, double imageHeight)
{
    array_Eye_Darken_Left_Points = regions.array_Eye_Left_Points;
    array_Eye_Darken_Right_Points = regions.array_Eye_Right_Points;
    path_Eye_Darken_Left = outlineThrough(array_Eye_Darken_Left_Points, imageHeight);
    path_Eye_Darken_Right = outlineThrough(array_Eye_Darken_Right_Points, imageHeight);
}
