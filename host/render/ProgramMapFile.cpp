#include "host/render/ProgramMapFile.h"

#include "host/Error.h"
#include "host/files/CsvLine.h"
#include "host/plugin/Programs.h"
#include "host/text/Format.h"
#include "host/text/Numbers.h"

#include <algorithm>
#include <optional>

namespace zelvatone {

namespace {

constexpr int kLastChange = 127;

struct Changes {
    int first;
    int last;
};

std::optional<Changes> changesIn(std::string_view text) {
    const std::size_t dash = text.find('-');
    const auto first = wholeNumber(text.substr(0, dash));
    const auto last = dash == std::string_view::npos ? first : wholeNumber(text.substr(dash + 1));
    if (!first || !last || *first < 0 || *first > *last || *last > kLastChange) {
        return std::nullopt;
    }
    return Changes{*first, *last};
}

class MapReader {
public:
    explicit MapReader(const std::vector<std::string>& names) : names_(names) {}

    void take(std::string_view line) {
        const std::vector<std::string> fields = csvFields(line);
        const bool isHeading =
            isFirst_ && fields[0].find_first_of("0123456789") == std::string::npos;
        isFirst_ = false;
        if (isHeading) {
            return;
        }
        if (fields.size() != 2) {
            throw InputError(
                formatText("a line has two fields (change, program), not {}", fields.size()));
        }
        const auto changes = changesIn(fields[0]);
        if (!changes) {
            throw InputError(formatText("'{}' is not a program change from 0 to {}, or a range "
                                        "such as 0-7",
                                        fields[0], kLastChange));
        }
        const int program = findProgram(names_, fields[1]);
        std::fill(map_.begin() + changes->first, map_.begin() + changes->last + 1,
                  static_cast<std::int16_t>(program));
    }

    const ProgramMap& map() const { return map_; }

private:
    const std::vector<std::string>& names_;
    ProgramMap map_ = noPrograms();
    bool isFirst_ = true;
};

} // namespace

ProgramMap parseProgramMap(std::string_view text, const std::vector<std::string>& names) {
    MapReader reader(names);
    readCsvLines(text, [&](std::string_view line) { reader.take(line); });
    return reader.map();
}

ProgramMap readProgramMap(const std::filesystem::path& path,
                          const std::vector<std::string>& names) {
    MapReader reader(names);
    readCsvFile(path, "file of programs", [&](std::string_view line) { reader.take(line); });
    return reader.map();
}

} // namespace zelvatone
