#include "host/files/CsvLine.h"

#include "host/Error.h"
#include "host/files/FileBytes.h"
#include "host/text/Format.h"

namespace zelvatone {

namespace {

bool isSpace(char c) {
    return c == ' ' || c == '\t' || c == '\r';
}

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && isSpace(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && isSpace(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

// Where the field at the front of `line` ends: at a comma that is in no quotes, or at the end.
std::size_t fieldEnd(std::string_view line) {
    bool quoted = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] == '"') {
            quoted = !quoted;
        } else if (line[i] == ',' && !quoted) {
            return i;
        }
    }
    return line.size();
}

std::string unquoted(std::string_view field) {
    if (field.empty() || field.front() != '"') {
        return std::string(field);
    }
    std::string text;
    for (std::size_t i = 1; i < field.size(); ++i) {
        if (field[i] != '"') {
            text += field[i];
        } else if (i + 1 == field.size()) {
            return text;
        } else if (field[++i] == '"') {
            text += '"';
        } else {
            break;
        }
    }
    throw InputError(formatText("quotes around only a part of '{}'", field));
}

constexpr std::size_t kLargestFile = 64U << 20U; // a move for every sample of half a minute
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF"; // that some programs begin texts with

// Takes a line off the front of `text`.
std::string_view takeLine(std::string_view& text) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return line;
}

bool isSkipped(std::string_view line) {
    const std::size_t start = line.find_first_not_of(" \t\r");
    return start == std::string_view::npos || line[start] == '#';
}

} // namespace

std::vector<std::string> csvFields(std::string_view line) {
    std::vector<std::string> fields;
    while (true) {
        const std::size_t end = fieldEnd(line);
        fields.push_back(unquoted(trimmed(line.substr(0, end))));
        if (end == line.size()) {
            return fields;
        }
        line.remove_prefix(end + 1);
    }
}

void readCsvLines(std::string_view text, const CsvLineReader& read) {
    if (text.substr(0, kByteOrderMark.size()) == kByteOrderMark) {
        text.remove_prefix(kByteOrderMark.size());
    }
    for (int number = 1; !text.empty(); ++number) {
        const std::string_view line = takeLine(text);
        if (isSkipped(line)) {
            continue;
        }
        try {
            read(line);
        } catch (const InputError& error) {
            throw InputError(formatText("{}: {}", number, error.what()));
        }
    }
}

void readCsvFile(const std::filesystem::path& path, std::string_view kind,
                 const CsvLineReader& read) {
    std::vector<std::uint8_t> bytes;
    try {
        bytes = readBytes(path, kLargestFile, std::string(kind));
    } catch (const InputError& error) {
        throw InputError(formatText("{}: {}", path.string(), error.what()));
    }
    try {
        readCsvLines({reinterpret_cast<const char*>(bytes.data()), bytes.size()}, read);
    } catch (const InputError& error) {
        throw InputError(formatText("{}:{}", path.string(), error.what()));
    }
}

} // namespace zelvatone
