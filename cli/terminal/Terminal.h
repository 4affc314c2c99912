// What the program can expect of whoever reads what it says.
#pragma once

namespace zelvatone {

// Whether a person watches standard error, on a terminal that knows how to erase a line.
bool isWatched();

} // namespace zelvatone
