// How large the editor's window may be.
#pragma once

namespace zelvatone {

// 1 shows the editor as it was drawn. Quarters are the steps in which desktops scale; three times
// the width still fits the screens that are scaled so.
inline constexpr double kSmallestEditorScale = 1;
inline constexpr double kLargestEditorScale = 3;
inline constexpr double kEditorScaleStep = 0.25;

// The scale that is nearest to `wanted`, between the smallest and the largest; of two that are
// equally near the larger one. The smallest for what is not a number (NaN). Any thread.
double nearestEditorScale(double wanted);

} // namespace zelvatone
