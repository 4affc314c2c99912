// Names of files made from names of programs.
#pragma once

#include <string>
#include <string_view>

namespace zelvatone {

// "07-Cyborg-Pad" for "07" and "Cyborg Pad": `start`, a hyphen, and of `name` what every file
// system and every address of a page takes. ASCII letters, digits and all characters beyond ASCII
// stay; each run of anything else becomes one hyphen, and none stands at an end. `start` alone when
// nothing of the name is left. `name` is UTF-8; the extension is the caller's.
std::string fileName(std::string_view start, std::string_view name);

} // namespace zelvatone
