// Hidden files and folders of unfinished writings, and what happens to those of killed processes.
#pragma once

#include <filesystem>

namespace zelvatone {

// A hidden name in `folder`; each `number` gives another one. No two processes that run on one
// machine make the same.
std::filesystem::path hiddenName(const std::filesystem::path& folder, int number);

// Marks an open file or folder as in use, until it is closed or the process ends, however it ends.
// False when another process has marked it.
bool claim(int descriptor);

// Removes from `folder` the user's own files and folders of hidden names that no process uses:
// their process was killed. What cannot be removed stays.
void sweepLeftovers(const std::filesystem::path& folder) noexcept;

} // namespace zelvatone
