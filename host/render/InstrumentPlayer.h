// One instrument playing one part of a song, block by block.
#pragma once

#include "host/plugin/HostedPlugin.h"
#include "host/render/Automation.h"
#include "host/render/BlockEvents.h"
#include "host/render/Performer.h"
#include "host/render/Transport.h"

#include <cstddef>
#include <span>

namespace zelvatone {

// Players of one song share nothing that changes, so each may render on a thread of its own.
class InstrumentPlayer {
public:
    // Switches the instrument on. Throws InputError for a plug-in that is not an instrument.
    // `plugin`, a spare and `song` must outlive the player; the block size is the plug-in's. Each
    // move is made at the first start of a block at or after its frame; instruments read parameters
    // once a block. Of `plan`, the number of messages counts as the least.
    InstrumentPlayer(HostedPlugin& plugin, const Song& song, EventSchedule schedule,
                     AutomationSchedule moves = {}, const PerformerPlan& plan = {});
    InstrumentPlayer(const InstrumentPlayer&) = delete;
    InstrumentPlayer& operator=(const InstrumentPlayer&) = delete;

    // Channels of the recording: the first two outputs, or the only one.
    int channels() const { return performer_.channels(); }
    // Renders the next block.
    void renderBlock();
    // Adds the rendered block times `gain` to `mix`, which holds blockSize times channels samples,
    // channels interleaved.
    void addTo(std::span<float> mix, float gain) const;

private:
    void makeMoves();

    int blockSize_;
    Transport transport_;
    BlockEvents events_;
    Performer performer_;
    AutomationSchedule moves_;
    std::size_t nextMove_ = 0;
};

} // namespace zelvatone
