// Files that say which program of a plug-in each program change of a song chooses.
#pragma once

#include "host/render/Performer.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace zelvatone {

// Reads lines of "change, program": a program change from 0 to 127, or a range of them as 0-7, and
// a program as findProgram() finds it among `names`. Changes that no line has choose nothing; of
// several lines for one, the last holds. Empty lines and those that begin with # are skipped, and
// so is a heading in the first line, without digits in its first field. Throws InputError that
// names the file and the line.
ProgramMap readProgramMap(const std::filesystem::path& path, const std::vector<std::string>& names);
// The same from memory; the error's text begins with the line's number.
ProgramMap parseProgramMap(std::string_view text, const std::vector<std::string>& names);

} // namespace zelvatone
