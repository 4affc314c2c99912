#include "host/text/Table.h"

#include "host/text/Names.h"

#include <algorithm>

namespace zelvatone {

namespace {

// Characters, not bytes: those that continue a UTF-8 character take no place.
std::size_t widthOf(const std::string& text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0U) != 0x80;
    }));
}

std::vector<std::size_t> columnWidths(const std::vector<std::vector<std::string>>& lines,
                                      std::size_t columns) {
    std::vector<std::size_t> widths(columns);
    for (const auto& cells : lines) {
        for (std::size_t i = 0; i < columns; ++i) {
            widths[i] = std::max(widths[i], widthOf(cells[i]));
        }
    }
    return widths;
}

} // namespace

std::string tableText(const std::vector<std::vector<std::string>>& lines,
                      const std::vector<bool>& rightAligned) {
    const auto widths = columnWidths(lines, rightAligned.size());
    std::string text;
    for (const auto& cells : lines) {
        std::string line;
        for (std::size_t i = 0; i < widths.size(); ++i) {
            const std::string padding(widths[i] - widthOf(cells[i]), ' ');
            line += (i == 0 ? "" : "  ");
            line += rightAligned[i] ? padding + cells[i] : cells[i] + padding;
        }
        text += std::string(cleanEnd(line)) + "\n";
    }
    return text;
}

} // namespace zelvatone
