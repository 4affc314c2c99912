// Lines of a file of comma-separated values.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace zelvatone {

// The fields, without space around them. A field in quotes holds commas too, and a quote where two
// stand. Throws InputError for quotes that do not end where the field does.
std::vector<std::string> csvFields(std::string_view line);

using CsvLineReader = std::function<void(std::string_view line)>;

// Hands each line to `read`, except empty ones and those that begin with #. Throws InputError with
// the line's number before the text of one that `read` throws.
void readCsvLines(std::string_view text, const CsvLineReader& read);
// The same for a file of at most 64 MB, called `kind` in errors, which name the file.
void readCsvFile(const std::filesystem::path& path, std::string_view kind,
                 const CsvLineReader& read);

} // namespace zelvatone
