#include "host/text/Names.h"

#include "host/text/Format.h"

#include <algorithm>
#include <numeric>
#include <optional>
#include <tuple>
#include <utility>

namespace zelvatone {

namespace {

// The last row of the usual table of edits (insertions, deletions, replacements) that turn the
// beginnings of `b` into `a`, from its first row.
std::vector<std::size_t> editRow(std::string_view a, std::string_view b,
                                 std::vector<std::size_t> row) {
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t replaced = diagonal + (a[i] == b[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
        }
    }
    return row;
}

std::size_t editDistance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    return editRow(a, b, std::move(row)).back();
}

// To the part of `text` that is nearest: leaving out what is before and after it costs nothing.
std::size_t partDistance(std::string_view wanted, std::string_view text) {
    const auto row = editRow(wanted, text, std::vector<std::size_t>(text.size() + 1));
    return *std::min_element(row.begin(), row.end());
}

// Edits from the shorter text to the nearest part of the longer one; none when so many of the
// letters are wrong that they would fit anything.
std::optional<std::size_t> fit(std::string_view a, std::string_view b) {
    const std::string_view shorter = a.size() < b.size() ? a : b;
    const std::size_t edits = partDistance(shorter, a.size() < b.size() ? b : a);
    return shorter.empty() || edits > shorter.size() / 3 ? std::nullopt : std::optional(edits);
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

std::string wordList(const std::vector<std::string>& words, std::string_view last) {
    std::string text;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (i != 0) {
            text += i + 1 < words.size() ? ", " : formatText(" {} ", last);
        }
        text += words[i];
    }
    return text;
}

std::vector<std::string> nearestNames(const std::vector<std::string>& names,
                                      std::string_view wanted, std::size_t most) {
    struct Rated {
        std::size_t part;  // edits to the nearest part
        std::size_t whole; // edits to all of it, which decide among equals
        std::string name;
    };
    const std::string lower = lowerCase(wanted);
    std::vector<Rated> rated;
    for (const std::string& name : names) {
        const std::string other = lowerCase(name);
        if (const auto part = fit(lower, other)) {
            rated.push_back({*part, editDistance(lower, other), name});
        }
    }
    std::stable_sort(rated.begin(), rated.end(), [](const Rated& a, const Rated& b) {
        return std::tie(a.part, a.whole) < std::tie(b.part, b.whole);
    });
    std::vector<std::string> nearest;
    for (std::size_t i = 0; i < std::min(most, rated.size()); ++i) {
        nearest.push_back(rated[i].name);
    }
    return nearest;
}

} // namespace zelvatone
