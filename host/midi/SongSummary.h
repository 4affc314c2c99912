// What a MIDI file holds, counted.
#pragma once

#include "host/midi/MidiFile.h"

#include <array>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace zelvatone {

struct TrackSummary {
    int number = 0;   // from 1
    std::string name; // bytes as they are in the file
    int notes = 0;
};

struct ChannelSummary {
    int notes = 0;
    int lowest = 127; // of its notes; as the next one, of no meaning without any
    int highest = 0;
    int bends = 0;
    std::optional<double> bendRange; // semitones, the widest that the file asks for
    int pressures = 0;               // messages of channel and key pressure
    std::set<int> controllers;       // by number
    std::set<int> programs;          // 0 to 127

    bool isUsed() const {
        return notes + bends + pressures > 0 || !controllers.empty() || !programs.empty();
    }
};

struct SongSummary {
    double seconds = 0.0;
    double startTempo = 120.0; // quarter notes a minute; the usual one without a change
    double lowestTempo = 120.0;
    double highestTempo = 120.0;
    int beats = 4; // of the first bar
    int beatUnit = 4;
    int meterChanges = 0; // after the start
    int endlessNotes = 0;
    int exclusives = 0;
    std::vector<TrackSummary> tracks;
    std::array<ChannelSummary, 16> channels; // from channel 1
};

// Throws InputError for a tempo that is none and for a song longer than a day.
SongSummary summarise(const MidiFile& file);

} // namespace zelvatone
