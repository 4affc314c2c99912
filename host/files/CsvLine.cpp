#include "host/files/CsvLine.h"

#include "host/Error.h"
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

} // namespace zelvatone
