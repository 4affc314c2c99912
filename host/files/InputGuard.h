// Keeps what is read from being overwritten.
#pragma once

#include <filesystem>
#include <vector>

namespace zelvatone {

// Throws InputError when one of `outputs` is the same file as one of `inputs`, or as another of
// `outputs`: under the same name, through links, or as another name of it. Neither need exist.
void checkOutputs(const std::vector<std::filesystem::path>& outputs,
                  const std::vector<std::filesystem::path>& inputs);

} // namespace zelvatone
