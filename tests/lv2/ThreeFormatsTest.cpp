// The VST 2.4 file, the CLAP and the LV2 beside each other: one hash for each program.
#include "tests/clap/VstInstance.h"
#include "tests/clap/host/ClapInstance.h"
#include "tests/lv2/HostedLv2.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdio>
#include <set>

namespace zelvatone::test {
namespace {

constexpr double kRate = 44100;
// A chord is held, bent and let go, in two blocks; in the second one the tempo changes, at a sample
// where no message comes.
constexpr std::int32_t kBlock = 6000; // samples
constexpr std::int32_t kTempoFrame = 2500;
constexpr double kTempo = 240;

const std::vector<Lv2Event> kFirst{{.frame = 0, .midi = {0x90, 45, 100}},
                                   {.frame = 1000, .midi = {0x90, 52, 127}},
                                   {.frame = 3000, .midi = {0xE0, 0, 80}}};
const std::vector<Lv2Event> kSecond{{.frame = kTempoFrame, .tempo = kTempo},
                                    {.frame = 4000, .midi = {0x80, 45, 0}},
                                    {.frame = 5000, .midi = {0xE0, 0, 64}}};

using Samples = std::vector<float>;

void append(Samples& all, const Samples& part) {
    all.insert(all.end(), part.begin(), part.end());
}

// Its host tells the tempo between blocks only: the second block is two.
Samples playVst(int program) {
    VstInstance vst(ZELVATONE_MODULE_PATH, kRate);
    vst.setProgram(program);
    const auto send = [&vst](const Lv2Event& event, std::int32_t start) {
        vst.send(event.midi[0], event.midi[1], event.midi[2],
                 static_cast<std::int32_t>(event.frame) - start);
    };
    for (const Lv2Event& event : kFirst) {
        send(event, 0);
    }
    Samples sound = vst.play(kBlock);
    append(sound, vst.play(kTempoFrame));
    vst.tempo = kTempo;
    send(kSecond[1], kTempoFrame);
    send(kSecond[2], kTempoFrame);
    append(sound, vst.play(kBlock - kTempoFrame));
    return sound;
}

Samples playClap(int program) {
    static const ClapLibrary library(ZELVATONE_CLAP);
    ClapInstance instance(library, "com.quillfeather.zelvatone");
    instance.activate(kRate, kBlock);
    Samples sound;
    InputList events;
    OutputList sent;
    events.add(midi(0, 0xC0, static_cast<std::uint8_t>(program), 0));
    for (const auto& block : {kFirst, kSecond}) {
        for (const Lv2Event& event : block) {
            const auto frame = static_cast<std::uint32_t>(event.frame);
            if (event.tempo != 0) {
                events.add(tempo(frame, event.tempo));
            } else {
                events.add(midi(frame, event.midi[0], event.midi[1], event.midi[2]));
            }
        }
        append(sound, instance.play(kBlock, events, sent).at(0));
        events.clear();
    }
    return sound;
}

Samples playLv2(int program) {
    HostedLv2 lv2(kRate);
    lv2.restore(Lv2Bundle::get().preset(program).get());
    Samples sound = lv2.render(kBlock, kFirst).left;
    append(sound, lv2.render(kBlock, kSecond).left);
    return sound;
}

// FNV-1a over the samples' bits.
std::uint64_t hashOf(const Samples& samples) {
    std::uint64_t hash = 14695981039346656037U;
    for (const float sample : samples) {
        hash = (hash ^ std::bit_cast<std::uint32_t>(sample)) * 1099511628211U;
    }
    return hash;
}

TEST(ThreeFormats, MakeTheSameSamplesWithEachProgram) {
    std::string table = "program  VST 2.4           CLAP              LV2\n";
    std::set<std::uint64_t> sounds;
    for (int program = 0; program < 42; ++program) {
        const std::uint64_t vst = hashOf(playVst(program));
        const std::uint64_t clap = hashOf(playClap(program));
        const std::uint64_t lv2 = hashOf(playLv2(program));
        sounds.insert(vst);
        EXPECT_EQ(clap, vst) << program;
        EXPECT_EQ(lv2, vst) << program;
        char row[80];
        std::snprintf(row, sizeof row, "%7d  %016llx  %016llx  %016llx\n", program,
                      static_cast<unsigned long long>(vst), static_cast<unsigned long long>(clap),
                      static_cast<unsigned long long>(lv2));
        table += row;
    }
    // Neither silence nor one program in all places.
    EXPECT_EQ(sounds.size(), 42U);
    std::fputs(table.c_str(), stdout);
}

} // namespace
} // namespace zelvatone::test
