// Reads a whole file that a user named, and says in a line why that cannot be.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace zelvatone {

// All bytes of a file of at most `largest` bytes, which keeps a device or a film from filling the
// memory. `kind` says in errors what was looked for, e.g. "MIDI file". Throws InputError, without
// the file's name, for a file that is missing, a folder, unreadable or larger.
std::vector<std::uint8_t> readBytes(const std::filesystem::path& path, std::size_t largest,
                                    const std::string& kind);

} // namespace zelvatone
