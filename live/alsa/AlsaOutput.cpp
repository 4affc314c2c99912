#include "live/alsa/AlsaOutput.h"

#include "host/Error.h"
#include "host/text/Format.h"
#include "live/DeviceNames.h"

#include <cerrno>
#include <cstdlib>
#include <initializer_list>

namespace zelvatone {

namespace {

constexpr int kUsualRate = 48000; // what most cards run at
constexpr int kOtherRate = 44100;
constexpr int kUsualBuffer = 256; // samples: 5 ms, which any machine of today keeps up with
constexpr int kBlocksAhead = 3;   // one is heard, one waits, one is being made
constexpr unsigned int kChannels = 2;
constexpr const char* kUsualDevice = "default";
constexpr const char* kNullDevice = "null"; // takes all and plays nothing

struct Hint {
    std::string name;
    std::string description;
};

std::string hintText(const alsa::Library& alsa, const void* hint, const char* id) {
    char* text = alsa.deviceNameGetHint(hint, id);
    std::string copy = text == nullptr ? "" : text;
    std::free(text); // as the library says
    return copy;
}

std::vector<Hint> outputHints(const alsa::Library& alsa) {
    constexpr int kAllCards = -1;
    std::vector<Hint> list;
    void** hints = nullptr;
    if (alsa.deviceNameHint(kAllCards, "pcm", &hints) != 0) {
        return list;
    }
    for (void** hint = hints; *hint != nullptr; ++hint) {
        const std::string name = hintText(alsa, *hint, "NAME");
        if (hintText(alsa, *hint, "IOID") != "Input" && name != kNullDevice) { // empty: both
            list.push_back({name, hintText(alsa, *hint, "DESC")});
        }
    }
    alsa.deviceNameFreeHint(hints);
    return list;
}

// ALSA's own name of a device. One that it does not list, as hw:1, may be named in full.
std::string deviceName(const alsa::Library& alsa, const std::optional<std::string>& choice) {
    if (!choice) {
        return kUsualDevice;
    }
    if (*choice == kNoDevice) {
        return kNullDevice;
    }
    for (const Hint& hint : outputHints(alsa)) {
        if (matchesDevice(hint.name, *choice) || matchesDevice(hint.description, *choice)) {
            return hint.name;
        }
    }
    return *choice;
}

} // namespace

AlsaOutput::AlsaOutput(const alsa::Library& library, const DeviceChoice& choice)
    : alsa_(library),
      name_(deviceName(library, choice.output)),
      format_{choice.rate.value_or(kUsualRate), choice.buffer.value_or(kUsualBuffer)},
      rateIsChosen_(choice.rate.has_value()) {
    const int error = open(name_);
    if (error == 0) {
        rateIsChosen_ = true; // it stays, also when the device goes and comes back
        return;
    }
    if (choice.output || error == -EBUSY || error == -EACCES || error == -EPERM) {
        throw InputError(formatText("ALSA does not open the output '{}': {}; --list shows outputs",
                                    name_, alsa_.errorText(error)));
    }
}

AlsaOutput::~AlsaOutput() {
    close();
}

void AlsaOutput::close() {
    if (pcm_ != nullptr) {
        alsa_.pcmClose(pcm_);
        pcm_ = nullptr;
    }
}

// A card itself takes neither float samples nor any rate; with the plug in front it does. A card's
// own rate is better than one that the plug converts. Returns 0 or an error of ALSA's.
int AlsaOutput::open(const std::string& name) {
    int error = 0;
    for (const std::string& each : {name, formatText("plug:'{}'", name)}) {
        if (!rateIsChosen_) {
            for (const int rate : {kUsualRate, kOtherRate}) {
                error = openInRate(each, rate, false);
                if (error == 0) {
                    return 0;
                }
            }
        }
        error = openInRate(each, format_.rate, true);
        if (error == 0 || error == -EBUSY) {
            return error;
        }
    }
    return error;
}

int AlsaOutput::openInRate(const std::string& name, int rate, bool mayResample) {
    constexpr int kMicroseconds = 1000000;
    int error = alsa_.pcmOpen(&pcm_, name.c_str(), SND_PCM_STREAM_PLAYBACK, 0);
    if (error < 0) {
        pcm_ = nullptr;
        return error;
    }
    const auto ahead = static_cast<unsigned int>(static_cast<std::int64_t>(kBlocksAhead) *
                                                 format_.buffer * kMicroseconds / rate);
    error = alsa_.pcmSetParams(pcm_, SND_PCM_FORMAT_FLOAT, SND_PCM_ACCESS_RW_INTERLEAVED, kChannels,
                               static_cast<unsigned int>(rate), mayResample ? 1 : 0, ahead);
    snd_pcm_uframes_t periodFrames = 0;
    if (error == 0) {
        error = alsa_.pcmGetParams(pcm_, &bufferFrames_, &periodFrames);
    }
    if (error < 0) {
        close();
        return error;
    }
    format_.rate = rate;
    return 0;
}

bool AlsaOutput::openAgain() {
    return isOpen() || open(name_) == 0;
}

AlsaOutput::Result AlsaOutput::write(std::span<const float> samples) {
    Result result = Result::kWritten;
    while (!samples.empty()) {
        const auto written = alsa_.pcmWrite(pcm_, samples.data(), samples.size() / kChannels);
        if (written >= 0) {
            samples = samples.subspan(static_cast<std::size_t>(written) * kChannels);
            continue;
        }
        // The card has run out of samples, or has slept; else it has been unplugged.
        if (alsa_.pcmRecover(pcm_, static_cast<int>(written), 1) != 0) {
            close();
            return Result::kGone;
        }
        result = Result::kWrittenLate;
    }
    return result;
}

std::vector<std::string> AlsaOutput::devices(const alsa::Library& library) {
    std::vector<std::string> names;
    for (const Hint& hint : outputHints(library)) {
        names.push_back(hint.name);
    }
    return names;
}

} // namespace zelvatone
