// Shared libraries, as each platform loads them.
#pragma once

#include <string>

namespace zelvatone::test {

// Null if the file cannot be loaded.
void* openModule(const std::string& path);
// The address of an exported name; null without it.
void* symbolOf(void* module, const char* name);

} // namespace zelvatone::test
