// A sound card, or what ALSA has in its place.
#pragma once

#include "live/AudioBackend.h"
#include "live/alsa/AlsaLibrary.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace zelvatone {

// One thread at a time.
class AlsaOutput {
public:
    // Opens the device of `choice`. Check isOpen() afterwards: without a choice there may be no
    // card. Throws InputError when the device exists and cannot be had. `library` must outlive it.
    AlsaOutput(const alsa::Library& library, const DeviceChoice& choice);
    ~AlsaOutput();
    AlsaOutput(const AlsaOutput&) = delete;
    AlsaOutput& operator=(const AlsaOutput&) = delete;

    bool isOpen() const { return pcm_ != nullptr; }
    AudioFormat format() const { return format_; }
    // Samples from writing one to the speaker.
    std::int64_t bufferFrames() const { return static_cast<std::int64_t>(bufferFrames_); }

    enum class Result { kWritten, kWrittenLate, kGone };
    // Waits until the device has room. `samples`: both channels interleaved. With kGone it is
    // closed.
    Result write(std::span<const float> samples);
    // The same device in the same format, when it is back. Returns whether it is.
    bool openAgain();

    // Names of what can be opened.
    static std::vector<std::string> devices(const alsa::Library& library);

private:
    int open(const std::string& name);
    int openInRate(const std::string& name, int rate, bool mayResample);
    void close();

    const alsa::Library& alsa_;
    std::string name_;
    snd_pcm_t* pcm_ = nullptr; // null while there is no device
    AudioFormat format_;
    bool rateIsChosen_;
    snd_pcm_uframes_t bufferFrames_ = 0;
};

} // namespace zelvatone
