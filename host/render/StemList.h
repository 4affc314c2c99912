// The list of the stems that a rendering left in a folder, so that the next one knows its own.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace zelvatone {

struct StemEntry {
    std::string name; // UTF-8, without a folder
    std::int64_t bytes;
};

// What the list in `folder` names; empty without a list or with a damaged one.
std::vector<StemEntry> readStemList(const std::filesystem::path& folder);

// Writes the list of these files in `folder`. Throws InputError.
void writeStemList(const std::filesystem::path& folder, const std::vector<std::string>& names);

// Removes the files of `before` that are not among `names`. One that has another size by now was
// changed since and stays, as does what cannot be removed.
void removeOldStems(const std::filesystem::path& folder, const std::vector<StemEntry>& before,
                    const std::vector<std::string>& names);

} // namespace zelvatone
