// What the terminal of standard error can do.
#pragma once

namespace zelvatone {

// Whether a person watches standard error, on a terminal that knows how to erase a line.
bool isWatched();

} // namespace zelvatone
