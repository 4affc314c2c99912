// Texts of a page.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zelvatone {

using PageValues = std::vector<std::pair<std::string, std::string>>;

// The part of a page with "{{name}}" replaced by each value, and by nothing where there is none.
// Values are not looked through again.
std::string filled(std::string_view part, const PageValues& values);

// Text as it stands in HTML, inside of quotes too.
std::string htmlText(std::string_view text);

// 0.5 as "50.00%".
std::string percentText(double part);

// With that many digits after the point, a minus of a number's width, and no minus for zero.
// `plus` stands before numbers above zero.
std::string signedText(double number, int digits, std::string_view plus = "");

} // namespace zelvatone
