// The lines for look-ups that failed.
#pragma once

#include "engine/VoiceSettings.h"
#include "engine/fast/ModeKernel.h"

namespace zelvatone {

// Prints the lines of a run and empties `failures`: sample by sample, as the reference renderer
// prints them, although voices were rendered one after the other. Audio thread.
void printFailedLookups(FailedLookups& failures, const VoiceSettings& settings);

} // namespace zelvatone
