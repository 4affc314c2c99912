#include "tests/live/TakeSession.h"

#include "host/midi/MidiFileReader.h"
#include "host/plugin/ParameterLookup.h"
#include "host/render/InstrumentPlayer.h"
#include "live/take/TakeFiles.h"

#include <array>

namespace zelvatone {

namespace {

class RandomPlayer {
public:
    explicit RandomPlayer(std::uint32_t seed) : random_(seed) {}

    int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }

    // Some thirty messages a second.
    std::vector<MidiMessage> messages(std::int32_t frames, int rate) {
        std::vector<MidiMessage> list;
        for (std::int32_t frame = 0; frame < frames; ++frame) {
            if (below(rate) < 30) {
                list.push_back(message(frame));
            }
        }
        return list;
    }

private:
    MidiMessage message(std::int32_t frame) {
        constexpr std::array<int, 6> kControllers{1, 7, 11, 64, 74, 121};
        const int channel = below(16);
        const auto make = [&](int status, int data1, int data2) {
            return MidiMessage{.frame = frame,
                               .status = static_cast<std::uint8_t>(status | channel),
                               .data1 = static_cast<std::uint8_t>(data1),
                               .data2 = static_cast<std::uint8_t>(data2)};
        };
        switch (below(12)) {
        case 0:
            return make(kControllerStatus, kControllers.at(static_cast<std::size_t>(below(6))),
                        below(128));
        case 1:
            return make(kBendStatus, below(128), below(128));
        case 2:
            return below(8) == 0 ? make(kProgramStatus, below(128), 0)
                                 : make(kControllerStatus, 64, 0);
        case 3:
            return below(8) == 0 ? make(kControllerStatus, 120 + 3 * below(2), 0)
                                 : make(kControllerStatus, 7, 127);
        case 4:
        case 5:
        case 6:
        case 7:
            return make(kNoteOffStatus, 36 + below(40), 0);
        default:
            return make(kNoteOnStatus, 36 + below(40), 1 + below(127));
        }
    }

    std::mt19937 random_;
};

void drain(TakeRings& rings, Take& take) {
    std::array<float, 4096> samples{};
    while (const std::size_t count = rings.read(std::span(samples))) {
        take.sound.insert(take.sound.end(), samples.begin(),
                          samples.begin() + static_cast<std::ptrdiff_t>(count));
    }
    std::array<TakeEvent, 256> events{};
    while (const std::size_t count = rings.read(std::span(events))) {
        take.events.insert(take.events.end(), events.begin(),
                           events.begin() + static_cast<std::ptrdiff_t>(count));
    }
}

} // namespace

Take playAtRandom(const std::string& pluginPath, const SessionPlan& plan, const Song& song) {
    const PluginLibrary library(pluginPath);
    const StreamFormat format{static_cast<double>(plan.rate), plan.blockSize};
    HostedPlugin plugin(library, format);
    HostedPlugin spare(library, format);
    TakeRings rings(plan.rate, 2, 2.0);
    ControllerMap controllers = noControllers();
    controllers.at(74) = 3;
    LivePlayer player({.plugin = &plugin,
                       .spare = &spare,
                       .song = &song,
                       .take = &rings,
                       .programs = programsByNumber(plugin.programCount()),
                       .controllers = controllers});
    RandomPlayer random(plan.seed);
    Take take;
    std::vector<float> left(4096);
    std::vector<float> right(4096);
    const auto frames = static_cast<std::int64_t>(plan.seconds * plan.rate);
    for (std::int64_t done = 0; done < frames;) {
        const int count = plan.hasOddBlocks ? 1 + random.below(1000) : plan.blockSize;
        if (random.below(50) == 0) {
            player.send(
                {.kind = LiveCommand::Kind::kMove,
                 .parameter = static_cast<std::int16_t>(random.below(plugin.parameterCount())),
                 .value = static_cast<float>(random.below(1000)) / 999.0F});
        }
        player.process(left.data(), right.data(), count, random.messages(count, plan.rate));
        done += count;
        drain(rings, take);
    }
    return take;
}

std::vector<float> renderAgain(const std::string& pluginPath, const SessionPlan& plan,
                               const Take& take, const Song& song) {
    const PluginLibrary library(pluginPath);
    const StreamFormat format{static_cast<double>(plan.rate), plan.blockSize};
    HostedPlugin plugin(library, format);
    HostedPlugin spare(library, format);
    const TakeClock clock(song.tempo, plan.rate);
    const auto frames = static_cast<std::int64_t>(take.sound.size()) / 2;
    const Song again = makeSong(parseMidiFile(takeMidi(take.events, frames, clock)));
    const auto names = parameterNames(plugin);
    const std::string moves = takeAutomation(take.events, names, plan.rate, "");
    InstrumentPlayer player(plugin, again, scheduleEvents(again, format.sampleRate),
                            scheduleMoves(parseAutomation(moves, names), format.sampleRate),
                            {.programs = programsByNumber(plugin.programCount()), .spare = &spare});
    std::vector<float> sound;
    std::vector<float> mix(static_cast<std::size_t>(plan.blockSize) * 2);
    while (sound.size() < take.sound.size()) {
        std::fill(mix.begin(), mix.end(), 0.0F);
        player.renderBlock();
        player.addTo(mix, 1.0F);
        sound.insert(sound.end(), mix.begin(), mix.end());
    }
    return sound;
}

} // namespace zelvatone
