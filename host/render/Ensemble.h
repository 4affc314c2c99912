// The instruments that play a song together, on several threads.
#pragma once

#include "host/plugin/HostedPlugin.h"
#include "host/render/Finish.h"
#include "host/render/InstrumentPlayer.h"
#include "host/threads/ThreadTeam.h"

#include <memory>
#include <span>
#include <string>
#include <vector>

namespace zelvatone {

// One instrument, what it plays and how loud. The player plays the plug-in.
struct Part {
    std::string name; // of its stem's file, without an extension
    std::unique_ptr<HostedPlugin> plugin;
    std::unique_ptr<HostedPlugin> spare; // see PerformerPlan; null for none
    std::unique_ptr<InstrumentPlayer> player;
    float gain = 1.0F; // factor
};

// Every part renders by itself and the mix adds them up in their order, so the sound is the same
// for any number of threads.
class Ensemble {
public:
    // At least one part; all of one plug-in and one block size. Each part's sound is finished as
    // `finish` says, after its gain.
    Ensemble(std::vector<Part> parts, int threads, const FinishPlan& finish = {});

    int channels() const { return finishes_[0].channels(); } // of the mix and of every part
    std::size_t size() const { return parts_.size(); }
    const std::string& name(std::size_t part) const { return parts_[part].name; }

    // Renders the next blocks of every part. Returns the mix, channels interleaved.
    std::span<float> renderRound();
    // What a part came to in the last round, with its gain; as long as the mix.
    std::span<float> samples(std::size_t part) {
        return std::span(samples_[part]).first(mix_.size());
    }

private:
    void renderPart(std::size_t part);

    std::vector<Part> parts_;
    std::vector<Finish> finishes_; // by part
    ThreadTeam team_;
    std::size_t blockSamples_; // all channels of an instrument
    std::vector<float> mix_;
    std::vector<std::vector<float>> samples_; // by part; at the front what counts
};

} // namespace zelvatone
