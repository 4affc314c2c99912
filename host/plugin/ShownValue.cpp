#include "host/plugin/ShownValue.h"

#include "host/text/Format.h"
#include "host/text/Names.h"
#include "host/text/Numbers.h"

#include <algorithm>

namespace zelvatone {

namespace {

constexpr int kSteps = 1024;  // finds every choice of a list of hundreds
constexpr int kHalvings = 24; // the bits of a float

// In small letters without spaces.
std::string lettersOf(std::string_view text) {
    std::string letters = lowerCase(text);
    letters.erase(std::remove(letters.begin(), letters.end(), ' '), letters.end());
    return letters;
}

// A number, where the text begins with one, and the rest of it.
struct ShownText {
    explicit ShownText(std::string_view text) : letters(lettersOf(text)) {
        const std::size_t end =
            std::min(letters.find_first_not_of("+-.0123456789"), letters.size());
        const std::size_t sign = letters.starts_with('+') ? 1 : 0; // a plus is not read
        number = realNumber(std::string_view(letters).substr(sign, end - std::min(sign, end)));
        rest = number ? letters.substr(end) : letters;
    }

    std::string letters;
    std::optional<double> number;
    std::string rest;
};

// Plug-ins may cut what they show to the interface's eight letters.
bool isCutFrom(std::string_view shown, const ShownText& wanted) {
    return shown.size() == kVstMaxParamStrLen && wanted.letters.starts_with(lettersOf(shown));
}

// Tries values of one parameter.
class Trial {
public:
    Trial(HostedPlugin& plugin, int index, std::string_view wanted)
        : plugin_(plugin), index_(index), before_(plugin.parameter(index)), wanted_(wanted) {}
    ~Trial() { plugin_.setParameter(index_, before_); }
    Trial(const Trial&) = delete;
    Trial& operator=(const Trial&) = delete;

    // Asks once for several questions about one value.
    std::string textAt(float value) {
        if (tried_ != value) {
            plugin_.setParameter(index_, value);
            text_ = plugin_.text(effGetParamDisplay, index_);
            tried_ = value;
        }
        return text_;
    }
    bool fits(float value) {
        const std::string text = textAt(value);
        const ShownText shown(text);
        return (shown.number == wanted_.number && shown.rest == wanted_.rest) ||
               isCutFrom(text, wanted_);
    }
    // Whether the wanted number lies above what is shown there; none without two numbers.
    std::optional<bool> isBelowWanted(float value) {
        const ShownText shown(textAt(value));
        if (!shown.number || !wanted_.number || shown.rest != wanted_.rest) {
            return std::nullopt;
        }
        return *shown.number < *wanted_.number;
    }

private:
    HostedPlugin& plugin_;
    int index_;
    float before_;
    ShownText wanted_;
    std::optional<float> tried_; // what the parameter is set to
    std::string text_;           // that it shows there
};

float stepValue(int step) {
    return static_cast<float>(step) / static_cast<float>(kSteps);
}

// Between two values, of which one shows less than is wanted and the other more.
std::optional<float> valueBetween(Trial& trial, float low, float high) {
    const auto atLow = trial.isBelowWanted(low);
    for (int i = 0; i < kHalvings; ++i) {
        const float middle = 0.5F * (low + high);
        if (trial.fits(middle)) {
            return middle;
        }
        (trial.isBelowWanted(middle) == atLow ? low : high) = middle;
    }
    return std::nullopt;
}

std::optional<float> anyValue(Trial& trial) {
    std::optional<bool> before;
    for (int step = 0; step <= kSteps; ++step) {
        if (trial.fits(stepValue(step))) {
            return stepValue(step);
        }
        const auto here = trial.isBelowWanted(stepValue(step));
        if (before && here && *before != *here) {
            return valueBetween(trial, stepValue(step - 1), stepValue(step));
        }
        before = here;
    }
    return std::nullopt;
}

// The last value that fits on the way from one that does to `end`, which is searched up to the
// first step that does not.
float lastFitting(Trial& trial, float fitting, float end) {
    const float step = (end < fitting ? -1.0F : 1.0F) / static_cast<float>(kSteps);
    float outside = fitting;
    while (outside != end && trial.fits(outside)) {
        outside = std::clamp(outside + step, 0.0F, 1.0F);
    }
    if (trial.fits(outside)) {
        return outside;
    }
    float inside = outside == fitting ? fitting : std::clamp(outside - step, 0.0F, 1.0F);
    inside = trial.fits(inside) ? inside : fitting;
    for (int i = 0; i < kHalvings; ++i) {
        const float middle = 0.5F * (inside + outside);
        (trial.fits(middle) ? inside : outside) = middle;
    }
    return inside;
}

} // namespace

std::optional<float> valueShownAs(HostedPlugin& plugin, int index, std::string_view wanted) {
    Trial trial(plugin, index, wanted);
    const auto found = anyValue(trial);
    if (!found) {
        return std::nullopt;
    }
    const float middle =
        0.5F * (lastFitting(trial, *found, 0.0F) + lastFitting(trial, *found, 1.0F));
    return trial.fits(middle) ? middle : found;
}

std::string shownLimits(HostedPlugin& plugin, int index) {
    Trial trial(plugin, index, "");
    return formatText("'{}' to '{}'", trial.textAt(0.0F), trial.textAt(1.0F));
}

} // namespace zelvatone
