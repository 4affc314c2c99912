// Where the editor's controls lie: a list of records, one a control, in the order in which they
// are added to the frame.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace zelvatone {

inline constexpr double kEditorWidth = 717; // pixels; the size of the background picture
inline constexpr double kEditorHeight = 477;

struct WidgetRecord {
    const char* kind; // "CKnob", "ParamDisplay", "CTextLabel"; "END" after the last control
    std::int32_t parameter;
    double left; // pixels from the frame's top left
    double top;
    double right;
    double bottom;
};

// 22 knobs, each with a display and a label, and the end.
inline constexpr std::size_t kWidgetRecords = 67;
using WidgetRecords = std::array<WidgetRecord, kWidgetRecords>;

WidgetRecords makeEditorLayout();

} // namespace zelvatone
