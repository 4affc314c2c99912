// A table of text for a terminal.
#pragma once

#include <string>
#include <vector>

namespace zelvatone {

// Lines of cells, columns two spaces apart, as wide as their widest cell; the first line is the
// heading. `rightAligned` says for each column whether its cells end on the right.
std::string tableText(const std::vector<std::vector<std::string>>& lines,
                      const std::vector<bool>& rightAligned);

} // namespace zelvatone
