// The numbers of a rendering, checked.
#pragma once

#include "audio/SoundFileFormat.h"
#include "commands/RenderCommand.h"

#include <optional>

namespace zelvatone {

struct RenderSettings {
    StreamFormat stream;
    SoundFileFormat file;              // channels are known when the plug-in is
    float gain = 1.0F;                 // factor
    std::optional<double> tailSeconds; // none: as long as it sounds
    std::vector<ParameterSetting> parameters;
};

// Throws UsageError for the first option that cannot be.
RenderSettings renderSettings(const RenderOptions& options);

} // namespace zelvatone
