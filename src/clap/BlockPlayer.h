// Plays a CLAP host's events on the instrument.
#pragma once

#include "clap/NoteTracker.h"
#include "clap/abi/Process.h"
#include "formats/Instrument.h"

#include <cstdint>

namespace zelvatone {

// The parameters' ids are their indices. Bypass is a parameter for CLAP's hosts; its id leaves room
// for parameters to come.
inline constexpr std::uint32_t kBypassId = 1000;

// Audio thread.
class BlockPlayer {
public:
    // `instrument` is not owned.
    explicit BlockPlayer(Instrument& instrument) : instrument_(instrument) {}

    // Renders a block of at least one output port of two channels of floats. Values that a program
    // change has set go to the host's list of events.
    void play(const clap::Process& process);
    // Takes over the values among `events`; for a host that has values but no block.
    void takeValues(const clap::InputEvents& events);
    void reset();

private:
    void playEvent(const clap::EventHeader& event, const clap::OutputEvents* out);
    void playMidi(const clap::MidiEvent& event, const clap::OutputEvents* out);
    void followTempo(const clap::TransportEvent& transport, std::uint32_t time);
    void tellValues(std::uint32_t time, const clap::OutputEvents* out);

    Instrument& instrument_;
    NoteTracker notes_;
};

// Appends the present value of the parameter to `out`; returns false when the host does not take
// it.
bool pushValue(const clap::OutputEvents& out, std::uint32_t time, std::uint32_t id, double value);

// The present value of the parameter `id`, which exists.
double valueOfId(const Instrument& instrument, std::uint32_t id);

} // namespace zelvatone
