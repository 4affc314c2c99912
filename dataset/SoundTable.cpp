#include "dataset/SoundTable.h"

#include "dataset/InstrumentNames.h"
#include "formats/ParameterUnits.h"
#include "host/Error.h"
#include "host/files/CsvLine.h"
#include "host/files/FileBytes.h"
#include "host/plugin/ParameterLookup.h"
#include "host/plugin/Programs.h"
#include "host/text/Format.h"
#include "host/text/Names.h"
#include "host/text/Numbers.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace zelvatone {

namespace {

constexpr std::size_t kLargest = std::size_t{1} << 30U; // some millions of lines

// Columns that are no parameters.
enum Column : int { kProgram = -1, kNote = -2, kVelocity = -3, kPassedOver = -4 };

constexpr std::array<std::string_view, 7> kLabels{"sound",    "split",  "shard",  "peak",
                                                  "loudness", "silent", "clipped"};

int columnNamed(const std::string& name) {
    if (equalInAnyCase(name, "program")) {
        return kProgram;
    }
    if (equalInAnyCase(name, "note")) {
        return kNote;
    }
    if (equalInAnyCase(name, "velocity")) {
        return kVelocity;
    }
    if (std::find(kLabels.begin(), kLabels.end(), name) != kLabels.end()) {
        return kPassedOver;
    }
    return findParameter(shownParameterNames(), name);
}

float wholeCell(std::string_view what, const std::string& cell, int least, int most) {
    const auto number = wholeNumber(cell);
    if (!number || *number < least || *number > most) {
        throw InputError(
            formatText("{} is a whole number from {} to {}, not '{}'", what, least, most, cell));
    }
    return static_cast<float>(*number);
}

float unitsCell(const ParameterUnits& parameter, const std::string& cell) {
    if (const auto number = realNumber(cell)) {
        const auto units = static_cast<float>(*number);
        if (nearestValue(parameter, static_cast<double>(units)) == units) {
            return units;
        }
    } else if (const auto shown = valueOfText(parameter, cell)) {
        return *shown;
    }
    throw InputError(formatText("{} is a {}number from {} to {}, not '{}'", parameter.name,
                                parameter.isWhole ? "whole " : "", shortestText(parameter.min),
                                shortestText(parameter.max), cell));
}

float valueOfCell(int column, const std::string& cell) {
    if (cell.empty() || column == kPassedOver) {
        return std::numeric_limits<float>::quiet_NaN();
    }
    switch (column) {
    case kProgram:
        return static_cast<float>(findProgram(factoryNames(), cell));
    case kNote:
        return wholeCell("note", cell, 0, 127);
    case kVelocity:
        return wholeCell("velocity", cell, 1, 127);
    default:
        return unitsCell(parameterUnits()[static_cast<std::size_t>(column)], cell);
    }
}

} // namespace

SoundTable::SoundTable(std::string_view text) {
    int number = 0;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        ++number;
        if (line.ends_with('\r')) {
            line.remove_suffix(1);
        }
        try {
            if (number == 1) {
                readHeading(line);
            } else if (!line.empty()) {
                readRow(line);
            }
        } catch (const InputError& error) {
            throw InputError(formatText("line {}: {}", number, error.what()));
        }
    }
    if (rows_ == 0) {
        throw InputError("has no line with a sound");
    }
}

void SoundTable::readHeading(std::string_view line) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF"; // as spreadsheets write it
    if (line.starts_with(kByteOrderMark)) {
        line.remove_prefix(kByteOrderMark.size());
    }
    for (const std::string& name : csvFields(line)) {
        const int column = columnNamed(name);
        if (column != kPassedOver &&
            std::find(columns_.begin(), columns_.end(), column) != columns_.end()) {
            throw InputError(formatText("two columns are named '{}'", name));
        }
        columns_.push_back(column);
    }
}

void SoundTable::readRow(std::string_view line) {
    const std::vector<std::string> fields = csvFields(line);
    if (fields.size() != columns_.size()) {
        throw InputError(formatText("{} fields under {} columns", fields.size(), columns_.size()));
    }
    for (std::size_t i = 0; i < fields.size(); ++i) {
        cells_.push_back(valueOfCell(columns_[i], fields[i]));
    }
    ++rows_;
}

SoundRow SoundTable::row(std::int64_t number) const {
    SoundRow row;
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        const float cell = cells_[static_cast<std::size_t>(number) * columns_.size() + i];
        if (std::isnan(cell)) {
            continue;
        }
        switch (columns_[i]) {
        case kProgram:
            row.program = static_cast<int>(cell);
            break;
        case kNote:
            row.note = static_cast<int>(cell);
            break;
        case kVelocity:
            row.velocity = static_cast<int>(cell);
            break;
        default:
            row.values.emplace_back(static_cast<ParameterIndex>(columns_[i]), cell);
        }
    }
    return row;
}

SoundTable readSoundTable(const std::filesystem::path& path) {
    try {
        const auto bytes = readBytes(path, kLargest, "table of sounds");
        return SoundTable({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    } catch (const InputError& error) {
        throw InputError(formatText("{}: {}", path.string(), error.what()));
    }
}

} // namespace zelvatone
