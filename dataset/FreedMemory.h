// Memory that is freed and wanted again at once.
#pragma once

namespace zelvatone {

// From here on the process keeps what it frees, for its next allocations. Without that the samples,
// instruments and files of each sound go back to the system, which clears every page that it gives
// out again: a tenth of the time of a short sound. The process holds what it once held at most.
// Before it has threads.
void keepFreedMemory();

} // namespace zelvatone
