// Sounds that a file of comma-separated values lists, one a line.
#pragma once

#include "params/ParameterTable.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zelvatone {

// What one line says; none where it says nothing.
struct SoundRow {
    std::optional<int> program;
    std::optional<int> note;
    std::optional<int> velocity;
    std::vector<std::pair<ParameterIndex, float>> values; // units
};

class SoundTable {
public:
    SoundTable() = default;
    // Reads a table from memory. The first line names the columns: "program", "note", "velocity"
    // and parameters; the labels that a dataset's own parameters.csv has beside are passed over. A
    // cell is a number in units or a value as the instrument shows it; an empty one says nothing.
    // Throws InputError that begins with the line's number.
    explicit SoundTable(std::string_view text);

    bool isEmpty() const { return rows_ == 0; }
    std::int64_t rows() const { return rows_; }
    // `number` from 0 to rows() - 1.
    SoundRow row(std::int64_t number) const;

private:
    void readHeading(std::string_view line);
    void readRow(std::string_view line);

    std::vector<int> columns_; // what each is: a parameter's index, or of Column
    std::vector<float> cells_; // row by row; NaN where nothing is said
    std::int64_t rows_ = 0;
};

// Throws InputError with the file's name.
SoundTable readSoundTable(const std::filesystem::path& path);

} // namespace zelvatone
