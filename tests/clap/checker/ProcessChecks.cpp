#include "tests/clap/checker/Check.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace zelvatone::test {

namespace {

constexpr double kRate = 44100.0;
constexpr std::uint32_t kMostFrames = 512;

void requireFinite(const ClapInstance::Sound& sound) {
    for (const std::vector<float>& channel : sound) {
        require(std::ranges::all_of(channel, [](float s) { return std::isfinite(s); }),
                "a sample is not a number, or infinite");
    }
}

bool isSilent(const ClapInstance::Sound& sound) {
    return std::ranges::all_of(sound, [](const std::vector<float>& channel) {
        return std::ranges::all_of(channel, [](float s) { return s == 0.0F; });
    });
}

bool takesNotes(const ClapInstance& instance) {
    const auto* ports = instance.extension<clap::PluginNotePorts>(clap::kNotePortsId);
    return ports != nullptr && ports->count(&instance.plugin(), true) > 0;
}

std::uint32_t below(std::uint32_t limit, std::mt19937& random) {
    return static_cast<std::uint32_t>(random() % limit);
}

// Notes that begin and end, or, without `areWhole`, ends without beginnings and the reverse.
void addRandomNotes(std::mt19937& random, std::uint32_t frames, bool areWhole, InputList& events) {
    std::int16_t key = 60;
    for (std::uint32_t time = 0; time < frames; time += 1 + below(100, random)) {
        const auto kind = static_cast<clap::EventType>(random() % 3); // on, off, choke
        if (areWhole) {
            events.add(note(time, clap::kNoteOff, key));
        }
        key = static_cast<std::int16_t>(random() % 128);
        const std::int16_t named =
            !areWhole && kind != clap::kNoteOn && random() % 4 == 0 ? -1 : key;
        events.add(note(time, areWhole ? clap::kNoteOn : kind, named,
                        static_cast<double>(random() % 1000) / 999.0));
    }
}

void playNotes(CheckContext& context, bool areWhole) {
    ClapInstance instance = context.make();
    instance.activate(kRate, kMostFrames);
    OutputList sent;
    for (int block = 0; block < 30; ++block) {
        const std::uint32_t frames = 1 + below(kMostFrames, context.random);
        InputList events;
        if (takesNotes(instance)) {
            addRandomNotes(context.random, frames, areWhole, events);
        }
        requireFinite(instance.play(frames, events, sent));
    }
    requireNoFaults(instance);
}

void notes(CheckContext& context) {
    playNotes(context, true);
}

void inconsistentNotes(CheckContext& context) {
    playNotes(context, false);
}

void randomMidi(CheckContext& context) {
    ClapInstance instance = context.make();
    instance.activate(kRate, kMostFrames);
    OutputList sent;
    for (int block = 0; block < 20; ++block) {
        InputList events;
        for (std::uint32_t time = 0; time < kMostFrames; time += below(64, context.random)) {
            events.add(midi(time, static_cast<std::uint8_t>(0x80 | context.random() % 128),
                            static_cast<std::uint8_t>(context.random() % 128),
                            static_cast<std::uint8_t>(context.random() % 128)));
        }
        requireFinite(instance.play(kMostFrames, events, sent));
        instance.runCallbacks();
    }
    requireNoFaults(instance);
}

void randomParameters(CheckContext& context) {
    ClapInstance instance = context.make();
    instance.activate(kRate, kMostFrames);
    OutputList sent;
    for (int block = 0; block < 30; ++block) {
        InputList events;
        addRandomValues(instance, context.random, events);
        if (takesNotes(instance)) {
            addRandomNotes(context.random, kMostFrames, true, events);
        }
        const clap::TransportEvent transport =
            tempo(0, 20.0 + static_cast<double>(context.random() % 400));
        requireFinite(instance.play(kMostFrames, events, sent, &transport));
    }
    requireNoFaults(instance);
}

// All that a performance may hold, cut into other blocks, must leave the plug-in usable.
void resetIsSilent(CheckContext& context) {
    ClapInstance instance = context.make();
    if (!takesNotes(instance)) {
        throw CheckSkipped("the plug-in takes no notes");
    }
    instance.activate(kRate, kMostFrames);
    InputList events;
    OutputList sent;
    events.add(note(0, clap::kNoteOn, 60));
    for (int block = 0; block < 10; ++block) {
        instance.play(kMostFrames, events, sent);
        events.clear();
    }
    ClapInstance::onAudioThread([&] { instance.plugin().reset(&instance.plugin()); });
    require(isSilent(instance.play(kMostFrames, events, sent)), "a reset plug-in still sounds");
}

// A plug-in that sleeps is not called before the next event, so nothing may be left to hear.
void sleepIsSilent(CheckContext& context) {
    ClapInstance instance = context.make();
    instance.activate(kRate, kMostFrames);
    InputList events;
    OutputList sent;
    if (takesNotes(instance)) {
        events.add(note(0, clap::kNoteOn, 60));
        events.add(note(200, clap::kNoteOff, 60));
    }
    clap::ProcessStatus status = clap::kProcessContinue;
    for (int block = 0; block < 400 && status != clap::kProcessSleep; ++block) {
        instance.play(kMostFrames, events, sent, nullptr, &status);
        events.clear();
    }
    if (status != clap::kProcessSleep) {
        throw CheckSkipped("the plug-in did not sleep in five seconds");
    }
    require(isSilent(instance.play(kMostFrames, events, sent)), "a sleeping plug-in sounds");
}

void emptyBlocks(CheckContext& context) {
    ClapInstance instance = context.make();
    instance.activate(kRate, kMostFrames);
    InputList events;
    OutputList sent;
    events.add(note(0, clap::kNoteOn, 60));
    instance.play(0, events, sent);
    events.clear();
    requireFinite(instance.play(1, events, sent));
    requireNoFaults(instance);
}

constexpr Check kChecks[] = {
    {"process-notes", "Random notes give finite samples.", notes},
    {"process-notes-inconsistent", "Notes that do not fit together do no harm.", inconsistentNotes},
    {"process-midi", "Random MIDI gives finite samples.", randomMidi},
    {"process-parameters", "Random values give finite samples.", randomParameters},
    {"process-reset", "Reset ends all sound.", resetIsSilent},
    {"process-sleep", "A plug-in that sleeps is silent.", sleepIsSilent},
    {"process-empty", "Blocks without samples do no harm.", emptyBlocks},
};

} // namespace

std::span<const Check> processChecks() {
    return kChecks;
}

} // namespace zelvatone::test
