// The numbers of a rendering, checked.
#pragma once

#include "cli/commands/ChannelOptions.h"
#include "cli/commands/RenderCommand.h"
#include "host/audio/SoundFileFormat.h"
#include "host/plugin/HostServices.h"

#include <map>
#include <optional>

namespace zelvatone {

// Which instruments a song has.
enum class SongLayout {
    kSplit,    // one for each channel that plays
    kTogether, // one for all channels that are not named
    kRaw       // one for the whole file, which gets it as it is
};

struct RenderSettings {
    StreamFormat stream;
    SoundFileFormat file; // channels are known when the plug-in is
    double gainDecibels = 0.0;
    float gain = 1.0F;         // the same as a factor
    std::optional<float> peak; // that the largest sample is brought to; none: as it is played
    double peakDecibels = 0.0; // as it was asked for, in dBFS
    bool isMono = false;
    bool blocksDc = false;
    std::optional<double> tailSeconds; // none: as long as it sounds
    int threads = 1;
    SongLayout layout = SongLayout::kSplit;
    std::map<int, ChannelChoice> channels; // those that were named
};

// "auto" or a number. Throws UsageError.
int threadsOption(const std::string& text);

// Throws UsageError for the first option that cannot be.
RenderSettings renderSettings(const RenderOptions& options);

} // namespace zelvatone
