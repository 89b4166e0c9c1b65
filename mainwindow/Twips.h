#pragma once

#include <cmath>

// Screen lengths as the settings and the layout rules give them: 15 twips are one logical
// pixel on every screen.
namespace morlevant::twips {

inline constexpr float perPixel = 15;

inline float fromPixels(double pixels) {
    return static_cast<float>(pixels * perPixel);
}

inline int toPixels(float twips) {
    return static_cast<int>(std::lround(twips / perPixel));
}

} // namespace morlevant::twips
