// Which instrument plays which MIDI channel.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace zelvatone {

struct ChannelChoice {
    int channel;         // 1 to 16
    std::string program; // name, beginning of one, number, or the path of an .fxp file
    float gain;          // factor
    bool isOff = false;  // the channel is not played; no program
};

// Reads "CHANNEL=PROGRAM" or "CHANNEL=PROGRAM@LEVELdB", e.g. "2=Organ@-6dB", or "CHANNEL=off".
// Throws UsageError.
ChannelChoice parseChannel(std::string_view text);

// By channel. Throws UsageError, also for a channel that is named twice.
std::map<int, ChannelChoice> parseChannels(const std::vector<std::string>& texts);

// Whether a program is given as a preset file.
bool isPresetPath(std::string_view program);

} // namespace zelvatone
