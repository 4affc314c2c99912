#include "text/Names.h"

#include <algorithm>
#include <numeric>

namespace zelvatone {

namespace {

// Insertions, deletions and replacements between two texts, by rows of the usual table.
std::size_t editDistance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t replaced = diagonal + (a[i] == b[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

} // namespace

std::string lowerCase(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return lower;
}

bool equalInAnyCase(std::string_view a, std::string_view b) {
    return lowerCase(a) == lowerCase(b);
}

std::string_view cleanEnd(std::string_view text) {
    const std::size_t last = text.find_last_not_of(' ');
    return text.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

std::string nearestName(const std::vector<std::string>& names, std::string_view wanted) {
    const std::string lower = lowerCase(wanted);
    // Half of the letters wrong is another word.
    std::size_t smallest = lower.size() / 2 + 1;
    std::string nearest;
    for (const std::string& name : names) {
        const std::size_t distance = editDistance(lowerCase(name), lower);
        if (distance < smallest) {
            smallest = distance;
            nearest = name;
        }
    }
    return nearest;
}

} // namespace zelvatone
