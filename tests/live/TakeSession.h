// A session of live play without a sound system, and the same rendered from its files.
#pragma once

#include "host/midi/Song.h"
#include "host/render/Performer.h"
#include "live/player/LivePlayer.h"

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace zelvatone {

struct SessionPlan {
    int rate = 48000;          // Hz
    int blockSize = 256;       // of the plug-in
    double seconds = 2.0;      // at least
    bool hasOddBlocks = false; // whether the sound system asks for blocks of any size
    std::uint32_t seed = 1;
};

struct Take {
    std::vector<float> sound; // channels interleaved
    std::vector<TakeEvent> events;
};

// Notes, bends, pedals, volumes, program changes and moves of parameters at random.
Take playAtRandom(const std::string& pluginPath, const SessionPlan& plan, const Song& song);

// What the files of that take give, in as many samples.
std::vector<float> renderAgain(const std::string& pluginPath, const SessionPlan& plan,
                               const Take& take, const Song& song);

} // namespace zelvatone
