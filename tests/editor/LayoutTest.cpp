// Where the controls lie. The list is written out here, as it is computed there.
#include "vstguieditor/EditorLayout.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

namespace zelvatone::test {
namespace {

struct Widget {
    std::string kind;
    int parameter;
    double left;
    double top;
    double right;
    double bottom;

    bool operator==(const Widget&) const = default;
};

void PrintTo(const Widget& widget, std::ostream* out) {
    *out << widget.kind << " " << widget.parameter << " at " << widget.left << ", " << widget.top
         << ", " << widget.right << ", " << widget.bottom;
}

// Controls of one kind side by side: each one's parameter and left edge.
void addRow(std::vector<Widget>& list, const std::string& kind, double top, double bottom,
            double width, const std::vector<std::pair<int, double>>& places) {
    for (const auto& [parameter, left] : places) {
        list.push_back({kind, parameter, left, top, left + width, bottom});
    }
}

std::vector<Widget> expectedLayout() {
    std::vector<Widget> list;
    const auto knobs = [&](double top, const std::vector<std::pair<int, double>>& places) {
        addRow(list, "CKnob", top, top + 48, 48, places);
    };
    const auto displays = [&](double top, const std::vector<std::pair<int, double>>& places) {
        addRow(list, "ParamDisplay", top, top + 20, 88, places);
    };
    const auto labels = [&](double top, const std::vector<std::pair<int, double>>& places) {
        addRow(list, "CTextLabel", top, top + 20, 88, places);
    };
    knobs(106, {{0, 296}, {1, 379}, {15, 462}, {7, 545}, {12, 628}});
    knobs(199, {{17, 296}, {2, 379}, {3, 462}, {16, 545}});
    displays(154, {{0, 276}, {1, 359}, {15, 442}, {7, 525}, {12, 608}});
    displays(247, {{17, 276}, {2, 359}, {3, 442}, {16, 525}});
    labels(86, {{0, 276}, {1, 359}, {15, 442}, {7, 525}, {12, 608}});
    labels(179, {{17, 276}, {2, 359}, {3, 442}, {16, 525}});
    knobs(397, {{4, 30}, {5, 96}, {6, 162}});
    displays(445, {{4, 10}, {5, 76}, {6, 142}});
    labels(377, {{4, 10}, {5, 76}, {6, 142}});
    knobs(106, {{8, 30}, {14, 96}, {13, 162}});
    displays(154, {{8, 10}, {14, 76}, {13, 142}});
    labels(86, {{8, 10}, {14, 76}, {13, 142}});
    knobs(260, {{9, 30}, {10, 96}, {11, 162}});
    displays(308, {{9, 10}, {10, 76}, {11, 142}});
    labels(240, {{9, 10}, {10, 76}, {11, 142}});
    knobs(397, {{18, 296}, {19, 362}, {20, 428}, {21, 494}});
    displays(445, {{18, 276}, {19, 342}, {20, 408}, {21, 474}});
    labels(377, {{18, 276}, {19, 342}, {20, 408}, {21, 474}});
    return list;
}

TEST(EditorLayout, ListsEachGroupsKnobsThenDisplaysThenLabels) {
    std::vector<Widget> list;
    for (const WidgetRecord& record : makeEditorLayout()) {
        if (std::string(record.kind) != "END") {
            list.push_back({record.kind, record.parameter, record.left, record.top, record.right,
                            record.bottom});
        }
    }
    EXPECT_EQ(list.size(), 66U);
    EXPECT_EQ(list, expectedLayout());
}

TEST(EditorLayout, EndsWithItsMark) {
    const WidgetRecord end = makeEditorLayout().back();
    EXPECT_STREQ(end.kind, "END");
    EXPECT_EQ(end.parameter, 0);
    EXPECT_EQ(end.right, 0);
    EXPECT_EQ(end.bottom, 0);
}

} // namespace
} // namespace zelvatone::test
