// The CLAP makes the samples of the VST 2.4 file, to the bit.
#include "params/ParameterTable.h"
#include "tests/clap/InstanceFixture.h"
#include "tests/clap/VstInstance.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace zelvatone::test {

namespace {

// What happens in one part of a song: the VST 2.4 host plays it as a block, the CLAP host as some
// samples of one.
struct Part {
    struct Message {
        std::int32_t frame;
        std::uint8_t status, data1, data2;
    };
    struct Move {
        std::int32_t parameter;
        float normalised;
    };

    std::int32_t frames;
    double tempo; // another one in each part, so that each is one for the CLAP, too
    std::vector<Move> moves;
    std::vector<Message> messages;
};

class SongMaker {
public:
    explicit SongMaker(unsigned seed) : random_(seed) {}

    std::vector<Part> make(std::int32_t partCount) {
        std::vector<Part> song;
        for (std::int32_t i = 0; i < partCount; ++i) {
            Part part{
                .frames = 1 + below(900), .tempo = 60.0 + i * 3.7, .moves = {}, .messages = {}};
            if (below(3) == 0) {
                part.moves.push_back({.parameter = below(22), .normalised = normalised()});
            }
            for (std::int32_t frame = below(400); frame < part.frames; frame += below(400)) {
                part.messages.push_back(message(frame));
            }
            song.push_back(part);
        }
        return song;
    }

private:
    std::int32_t below(std::int32_t limit) {
        return static_cast<std::int32_t>(random_() % static_cast<unsigned>(limit));
    }
    float normalised() { return static_cast<float>(below(1001)) / 1000.0F; }
    Part::Message message(std::int32_t frame) {
        const auto channel = static_cast<std::uint8_t>(below(16));
        const auto key = static_cast<std::uint8_t>(48 + below(24));
        switch (below(6)) {
        case 0:
            return {frame, static_cast<std::uint8_t>(0xE0 | channel),
                    static_cast<std::uint8_t>(below(128)), static_cast<std::uint8_t>(below(128))};
        case 1:
        case 2:
            return {frame, static_cast<std::uint8_t>(0x80 | channel), key, 0};
        default:
            return {frame, static_cast<std::uint8_t>(0x90 | channel), key,
                    static_cast<std::uint8_t>(below(128))};
        }
    }

    std::mt19937 random_;
};

// What the VST 2.4 file makes of a normalised value.
float unitsOf(const Part::Move& move) {
    static const SynthProgram kProgram = makeDefaultProgram();
    SynthParameter& parameter = *kProgram.parameters.at(static_cast<std::size_t>(move.parameter));
    parameter.setValue(parameter.toUnits(parameter.min, parameter.max, move.normalised));
    return parameter.value;
}

std::vector<float> playVst(std::int32_t program, const std::vector<Part>& song) {
    VstInstance vst(ZELVATONE_MODULE, static_cast<float>(kClapRate));
    vst.setProgram(program);
    std::vector<float> sound;
    for (const Part& part : song) {
        vst.tempo = part.tempo;
        for (const Part::Move& move : part.moves) {
            vst.setParameter(move.parameter, move.normalised);
        }
        for (const Part::Message& m : part.messages) {
            vst.send(m.status, m.data1, m.data2, m.frame);
        }
        const std::vector<float> block = vst.play(part.frames);
        sound.insert(sound.end(), block.begin(), block.end());
    }
    return sound;
}

// Several parts are one block of the CLAP.
std::vector<float> playClap(std::int32_t program, const std::vector<Part>& song, unsigned seed) {
    std::mt19937 random(seed);
    ClapInstance instance(clapLibrary(), kClapId);
    instance.activate(kClapRate, kClapFrames);
    InputList events;
    OutputList sent;
    events.add(midi(0, 0xC0, static_cast<std::uint8_t>(program), 0));
    instance.play(0, events, sent);
    std::vector<float> sound;
    for (std::size_t i = 0; i < song.size();) {
        events.clear();
        std::uint32_t frames = 0;
        do {
            const Part& part = song[i++];
            events.add(tempo(frames, part.tempo));
            for (const Part::Move& move : part.moves) {
                events.add(paramValue(frames, static_cast<std::uint32_t>(move.parameter),
                                      static_cast<double>(unitsOf(move))));
            }
            for (const Part::Message& m : part.messages) {
                events.add(
                    midi(frames + static_cast<std::uint32_t>(m.frame), m.status, m.data1, m.data2));
            }
            frames += static_cast<std::uint32_t>(part.frames);
        } while (i < song.size() && frames + 900 <= kClapFrames && random() % 3 != 0);
        const ClapInstance::Sound block = instance.play(frames, events, sent);
        EXPECT_EQ(block.at(0), block.at(1));
        sound.insert(sound.end(), block.at(0).begin(), block.at(0).end());
    }
    EXPECT_TRUE(instance.faults.empty());
    return sound;
}

// FNV-1a over the samples' bits.
std::string hashOf(const std::vector<float>& sound) {
    std::uint64_t hash = 14695981039346656037U;
    for (const float sample : sound) {
        hash = (hash ^ std::bit_cast<std::uint32_t>(sample)) * 1099511628211U;
    }
    char text[20];
    std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(hash));
    return text;
}

class ClapSound : public testing::TestWithParam<std::int32_t> {};

TEST_P(ClapSound, HasTheBitsOfTheVst) {
    const auto seed = static_cast<unsigned>(GetParam());
    const std::vector<Part> song = SongMaker(seed).make(12);
    const std::vector<float> vst = playVst(GetParam(), song);
    const std::vector<float> clap = playClap(GetParam(), song, seed);
    EXPECT_TRUE(std::ranges::any_of(vst, [](float s) { return s != 0.0F; }));
    EXPECT_EQ(hashOf(clap), hashOf(vst));
    RecordProperty("VST", hashOf(vst));
    RecordProperty("CLAP", hashOf(clap));
}

INSTANTIATE_TEST_SUITE_P(Program, ClapSound, testing::Range(0, 42));

} // namespace

} // namespace zelvatone::test
