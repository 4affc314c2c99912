// JSON as the host writes it: keys in the order of writing, always valid.
#pragma once

#include <nlohmann/json.hpp>

#include <string>

namespace zelvatone {

using Json = nlohmann::ordered_json;

// Indented, with a line end; bytes that are not UTF-8 (a path may hold some) become U+FFFD.
inline std::string jsonText(const Json& json) {
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace zelvatone
