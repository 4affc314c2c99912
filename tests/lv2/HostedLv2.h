// An instance of the bundle's sound, and its host.
#pragma once

#include "lv2/Identity.h"
#include "tests/lv2/Lv2Bundle.h"
#include "tests/plugin/HostedEffect.h"

#include <lv2/atom/forge.h>

#include <array>
#include <cstdint>
#include <vector>

namespace zelvatone::test {

inline constexpr std::uint32_t kMidiBytes = 3; // of a note, a controller or a bend

// What a host puts into the event port, at a sample of the block.
struct Lv2Event {
    std::int64_t frame;
    std::array<std::uint8_t, kMidiBytes> midi{};
    double tempo = 0; // beats per minute; an event with one is no MIDI
};

class HostedLv2 {
public:
    // An activated instance with its ports at their defaults.
    explicit HostedLv2(double sampleRate = 44100);
    ~HostedLv2();
    HostedLv2(const HostedLv2&) = delete;
    HostedLv2& operator=(const HostedLv2&) = delete;

    LilvInstance* instance() const { return instance_.get(); }
    float& port(std::uint32_t index) { return values_.at(index); }
    PortValues portValues() const;
    // As a host does on loading: first the ports, then what the plug-in keeps itself.
    void restore(const LilvState* state);
    // What a host saves, as the text that it writes into its files.
    std::string savedText();

    // `events` by ascending frames.
    StereoBlock render(std::int32_t frames, const std::vector<Lv2Event>& events = {});

private:
    void writeSequence(const std::vector<Lv2Event>& events);
    void writeTempo(double tempo);

    LilvOwner<LilvInstance> instance_;
    std::array<float, lv2::kPortCount> values_{};
    std::array<std::uint64_t, 4096> events_{}; // the event port's memory, aligned as atoms are
    LV2_Atom_Forge forge_{};
};

} // namespace zelvatone::test
