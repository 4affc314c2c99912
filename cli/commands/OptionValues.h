// Values of options, checked against the limits that the help names.
#pragma once

#include <string>
#include <string_view>

namespace zelvatone {

// The number that `text` spells, from `least` to `most`. Throws UsageError that names `option` and
// the limits; of realOption() they are in `range`, e.g. "0 to 600 seconds".
int wholeOption(std::string_view option, const std::string& text, int least, int most);
double realOption(std::string_view option, const std::string& text, double least, double most,
                  std::string_view range);

// "-6", "+3", "-3dB" or "3 dB", from -120 to 120. Throws UsageError that names `option`.
double decibelOption(std::string_view option, const std::string& text);

// "; write 0.5, with a point" for "0,5", which many countries write; else nothing.
std::string decimalPointHint(std::string_view text);

} // namespace zelvatone
