// The numbers of a rendering, checked.
#pragma once

#include "cli/commands/ChannelOptions.h"
#include "cli/commands/RenderCommand.h"
#include "host/audio/SoundFileFormat.h"
#include "host/plugin/HostServices.h"

#include <map>
#include <optional>

namespace zelvatone {

struct RenderSettings {
    StreamFormat stream;
    SoundFileFormat file;              // channels are known when the plug-in is
    float gain = 1.0F;                 // factor
    std::optional<double> tailSeconds; // none: as long as it sounds
    int threads = 1;
    std::map<int, ChannelChoice> channels; // those that have an instrument of their own
};

// "auto" or a number. Throws UsageError.
int threadsOption(const std::string& text);

// Throws UsageError for the first option that cannot be.
RenderSettings renderSettings(const RenderOptions& options);

} // namespace zelvatone
