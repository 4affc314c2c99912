#include "vstguieditor/EditorScale.h"

#include <algorithm>
#include <cmath>

namespace zelvatone {

double nearestEditorScale(double wanted) {
    if (std::isnan(wanted)) {
        return kSmallestEditorScale;
    }
    const double inRange = std::clamp(wanted, kSmallestEditorScale, kLargestEditorScale);
    return std::round(inRange / kEditorScaleStep) * kEditorScaleStep;
}

} // namespace zelvatone
