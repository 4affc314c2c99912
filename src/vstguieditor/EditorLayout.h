// Where the editor's controls lie: a list of records, one a control, in the order in which they
// are added to the frame, and the areas of its picture that can be clicked.
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

// An area of the background picture: pixels from the frame's top left.
struct EditorArea {
    double left;
    double top;
    double width;
    double height;
};

// The five panels, in the order of their help pages.
inline constexpr std::array<EditorArea, 5> kPanelAreas{{{14, 40, 257, 147},
                                                        {277, 40, 420, 235},
                                                        {14, 193, 257, 147},
                                                        {14, 344, 257, 130},
                                                        {277, 344, 286, 129}}};
inline constexpr EditorArea kHelpButtonArea{550, 0, 25, 30};
inline constexpr EditorArea kBadgeArea{580, 0, 133, 30}; // the maker's mark

} // namespace zelvatone
