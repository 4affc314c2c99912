#include "formats/InstrumentState.h"

#include "formats/NumberText.h"
#include "formats/ParameterUnits.h"

#include <cstddef>

namespace zelvatone {

namespace {

// The number at the end is the version. Another one may mean other things by the lines after it.
constexpr std::string_view kHeading = "Zelvatone state 1";
constexpr std::string_view kBypass = "Bypass";

void appendLine(std::string& text, std::string_view name, std::string_view value) {
    text.append(name).append(" = ").append(value).append("\n");
}

// Takes lines off the front of a text, each named beforehand.
class LineReader {
public:
    explicit LineReader(std::string_view text) : rest_(text) {}

    // Up to the next end of a line, which must be there; empty without one.
    std::string_view next() {
        const std::size_t end = rest_.find('\n');
        if (end == std::string_view::npos) {
            return {};
        }
        const std::string_view line = rest_.substr(0, end);
        rest_.remove_prefix(end + 1);
        return line;
    }

    // The value of the next line, which must be that of `name`; empty if it is not.
    std::string_view valueOf(std::string_view name) {
        std::string_view line = next();
        constexpr std::string_view kEquals = " = ";
        if (!line.starts_with(name) || !line.substr(name.size()).starts_with(kEquals)) {
            return {};
        }
        line.remove_prefix(name.size() + kEquals.size());
        return line;
    }

    bool isAtEnd() const { return rest_.empty(); }

private:
    std::string_view rest_;
};

} // namespace

InstrumentState defaultState() {
    InstrumentState state{.values = {}, .isBypassed = false};
    for (const ParameterUnits& parameter : parameterUnits()) {
        state.values.at(static_cast<std::size_t>(parameter.index)) = parameter.defaultValue;
    }
    return state;
}

std::string textOfState(const InstrumentState& state) {
    std::string text;
    text.append(kHeading).append("\n");
    for (const ParameterUnits& parameter : parameterUnits()) {
        appendLine(text, parameter.name,
                   exactText(state.values.at(static_cast<std::size_t>(parameter.index))));
    }
    appendLine(text, kBypass, state.isBypassed ? "1" : "0");
    return text;
}

std::optional<InstrumentState> stateOfText(std::string_view text) {
    LineReader lines(text);
    if (lines.next() != kHeading) {
        return std::nullopt;
    }
    InstrumentState state = defaultState();
    for (const ParameterUnits& parameter : parameterUnits()) {
        const std::optional<float> value =
            valueOfExactText(parameter, lines.valueOf(parameter.name));
        if (!value) {
            return std::nullopt;
        }
        state.values.at(static_cast<std::size_t>(parameter.index)) = *value;
    }
    const std::string_view bypass = lines.valueOf(kBypass);
    state.isBypassed = bypass == "1";
    if ((bypass != "0" && bypass != "1") || !lines.isAtEnd()) {
        return std::nullopt;
    }
    return state;
}

} // namespace zelvatone
