#include "vstguieditor/EditorLayout.h"

#include "vstguieditor/EditorAssert.h"

#include <initializer_list>
#include <span>

namespace zelvatone {

namespace {

constexpr double kKnobSize = 48;
constexpr double kMargin = 20; // a text is as high as this, and reaches as far beyond its knob
constexpr double kRowGap = 5;
constexpr auto kRowStep = static_cast<int>(kMargin + kKnobSize + kMargin + kRowGap);

// Knobs from left to right.
struct Row {
    double left; // of the first knob
    double top;
    double pitch;
    std::initializer_list<std::int32_t> parameters;
};

// Appends records to the list.
class LayoutWriter {
public:
    explicit LayoutWriter(WidgetRecords& records) : records_(records) {}

    // The rows' knobs, then their displays, then their labels.
    void addGroup(std::span<const Row> rows) {
        for (const Row& row : rows) {
            addRow("CKnob", row, {0, 0, kKnobSize, kKnobSize});
        }
        for (const Row& row : rows) {
            addRow("ParamDisplay", row,
                   {-kMargin, kKnobSize, kKnobSize + kMargin, kKnobSize + kMargin});
        }
        for (const Row& row : rows) {
            addRow("CTextLabel", row, {-kMargin, -kMargin, kKnobSize + kMargin, 0});
        }
    }

    void add(const WidgetRecord& record) {
        ZELVATONE_EDITOR_ASSERT(count_ < records_.size());
        records_[count_++] = record;
    }

private:
    // Edges as seen from the knob's top left.
    struct Edges {
        double left;
        double top;
        double right;
        double bottom;
    };

    void addRow(const char* kind, const Row& row, const Edges& edges) {
        double left = row.left;
        for (const std::int32_t parameter : row.parameters) {
            add({kind, parameter, left + edges.left, row.top + edges.top, left + edges.right,
                 row.top + edges.bottom});
            left += row.pitch;
        }
    }

    WidgetRecords& records_;
    std::size_t count_ = 0;
};

} // namespace

WidgetRecords makeEditorLayout() {
    constexpr double kWide = 83; // the right panel has room for its longer names
    constexpr double kNarrow = 66;
    const Row overTime[] = {{296, 106, kWide, {0, 1, 15, 7, 12}},
                            {296, 106 + kRowStep, kWide, {17, 2, 3, 16}}};
    const Row spectrum[] = {{30, 397, kNarrow, {4, 5, 6}}};
    const Row wave[] = {{30, 106, kNarrow, {8, 14, 13}}};
    const Row extraModes[] = {{30, 260, kNarrow, {9, 10, 11}}};
    const Row envelope[] = {{296, 397, kNarrow, {18, 19, 20, 21}}};
    WidgetRecords records{};
    LayoutWriter writer(records);
    for (const std::span<const Row> group :
         {std::span<const Row>(overTime), std::span<const Row>(spectrum),
          std::span<const Row>(wave), std::span<const Row>(extraModes),
          std::span<const Row>(envelope)}) {
        writer.addGroup(group);
    }
    writer.add({"END", 0, 0, 0, 0, 0});
    return records;
}

} // namespace zelvatone
