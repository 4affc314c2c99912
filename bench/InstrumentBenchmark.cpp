// Usage: zelvatone_instrument_bench [CSV]
//
// What whole VST 2 instruments take of a core for held notes, in turn in one run: ours and those of
// other makers that are installed. Prints a table, and writes it to the file CSV too.
//
// Instruments differ in what a note is, so the table says what each plays. Each is measured with no
// note, with 8 and with 32: what does not grow is no longer playing more notes.
#include "host/Error.h"
#include "host/plugin/HostedPlugin.h"
#include "params/ParameterTable.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <memory>
#include <vector>

using namespace zelvatone;

namespace {

constexpr StreamFormat kFormat{.sampleRate = 48000.0, .blockSize = 256};
constexpr int kLowestNote = 36;
constexpr int kRepeats = 21;
constexpr int kBlocks = 94;         // half a second, one measurement
constexpr int kBlocksToSettle = 94; // attacks are over

struct Contender {
    const char* name;
    const char* path;
    const char* plays;
    void (*prepare)(HostedPlugin& plugin); // null: as it comes
};

void askForHundredModes(HostedPlugin& plugin) {
    for (const int index : {kModeInit, kMinModes, kMaxModes}) {
        plugin.setParameter(index, 1.0F);
    }
}

constexpr std::array kContenders = {
    Contender{"zelvatone", ZELVATONE_MODULE, "its default program: 10 modes a note", nullptr},
    Contender{"zelvatone", ZELVATONE_MODULE, "100 modes a note", askForHundredModes},
    Contender{"amsynth", "/usr/lib/vst/amsynth_vst.so",
              "its first program: two oscillators and a filter a note; effects behind them",
              nullptr},
    Contender{"ZynAddSubFX", "/usr/lib/vst/ZynAddSubFX.so",
              "its default patch: one oscillator read from a table and a filter", nullptr},
    Contender{"Kars", "/usr/lib/vst/Kars-vst.so", "a plucked string: one delay line a note",
              nullptr},
};

double processSeconds() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now); // instruments may work on threads of their own
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

// An instrument that holds notes.
class Player {
public:
    Player(const Contender& contender, int notes)
        : library_(contender.path),
          plugin_(library_, kFormat),
          inputs_(static_cast<std::size_t>(plugin_.inputCount()), silence_.data()),
          sound_(static_cast<std::size_t>(plugin_.outputCount())) {
        for (auto& channel : sound_) {
            outputs_.push_back(channel.data());
        }
        if (contender.prepare != nullptr) {
            contender.prepare(plugin_);
        }
        time_.sampleRate = kFormat.sampleRate;
        time_.tempo = 120.0;
        time_.flags = kVstTransportPlaying | kVstTempoValid;
        plugin_.switchOn();
        render(1, nullptr); // some read their parameters here only
        startNotes(notes);
        render(kBlocksToSettle, nullptr);
    }
    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;

    void measure() {
        const double start = processSeconds();
        render(kBlocks, nullptr);
        seconds_.push_back(processSeconds() - start);
    }

    double corePercent() {
        std::sort(seconds_.begin(), seconds_.end());
        return 100.0 * seconds_[seconds_.size() / 2] * kFormat.sampleRate /
               (kBlocks * kFormat.blockSize);
    }

    // Of the last block's first channel, in dB below full scale: whether there is a sound at all.
    double level() const {
        double sum = 0.0;
        for (const float sample : sound_.front()) {
            sum += static_cast<double>(sample) * static_cast<double>(sample);
        }
        return 10.0 * std::log10(sum / kFormat.blockSize + 1e-30);
    }

private:
    using Channel = std::array<float, kFormat.blockSize>;

    void startNotes(int notes) {
        constexpr int kMost = 32;
        std::array<VstMidiEvent, kMost> messages{};
        struct {
            VstInt32 count;
            VstIntPtr reserved;
            std::array<VstMidiEvent*, kMost> events;
        } list{.count = notes, .reserved = 0, .events = {}};
        for (int i = 0; i < notes; ++i) {
            messages[i].type = kVstMidiType;
            messages[i].byteSize = sizeof(VstMidiEvent);
            messages[i].midiData[0] = static_cast<char>(0x90);
            messages[i].midiData[1] = static_cast<char>(kLowestNote + i);
            messages[i].midiData[2] = 100;
            list.events[i] = &messages[i];
        }
        render(1, reinterpret_cast<VstEvents*>(&list));
    }

    void render(int blocks, VstEvents* events) {
        for (int i = 0; i < blocks; ++i) {
            plugin_.render(time_, events, inputs_.data(), outputs_.data(), kFormat.blockSize);
            time_.samplePos += kFormat.blockSize;
        }
    }

    Channel silence_{};
    PluginLibrary library_;
    HostedPlugin plugin_;
    std::vector<float*> inputs_;
    std::vector<Channel> sound_;
    std::vector<float*> outputs_;
    VstTimeInfo time_{};
    std::vector<double> seconds_; // one a measurement
};

// One contender with no note, with 8 and with 32.
struct Trial {
    const Contender* contender;
    std::array<std::unique_ptr<Player>, 3> players;
};

std::vector<Trial> startTrials() {
    std::vector<Trial> trials;
    for (const Contender& contender : kContenders) {
        if (!std::filesystem::exists(contender.path)) {
            std::printf("%s is not installed\n", contender.name);
            continue;
        }
        trials.push_back(
            {&contender,
             {std::make_unique<Player>(contender, 0), std::make_unique<Player>(contender, 8),
              std::make_unique<Player>(contender, 32)}});
    }
    return trials;
}

void report(const Trial& trial, std::FILE* csv) {
    const auto& [none, few, many] = trial.players;
    const double idle = none->corePercent();
    const double eight = few->corePercent();
    const double all = many->corePercent();
    // The idle cost belongs to no note. Every instrument here plays eight notes.
    const double note = (eight - idle) / 8.0;
    std::printf("%-12s %8.3f %8.3f %8.3f %10.4f %7.1f   %s\n", trial.contender->name, idle, eight,
                all, note, many->level(), trial.contender->plays);
    if (csv != nullptr) {
        std::fprintf(csv, "%s,%s,%.4f,%.4f,%.4f,%.5f,%.1f\n", trial.contender->name,
                     trial.contender->plays, idle, eight, all, note, many->level());
    }
}

void compare(std::FILE* csv) {
    const std::vector<Trial> trials = startTrials();
    for (int repeat = 0; repeat < kRepeats; ++repeat) {
        for (const Trial& trial : trials) {
            for (const auto& player : trial.players) {
                player->measure();
            }
        }
    }
    std::printf("%% of a core    no note  8 notes 32 notes   one of 8   level   what it plays\n");
    for (const Trial& trial : trials) {
        report(trial, csv);
    }
}

} // namespace

int main(int argc, char** argv) {
    std::FILE* csv = argc > 1 ? std::fopen(argv[1], "w") : nullptr;
    if (argc > 1 && csv == nullptr) {
        std::perror(argv[1]);
        return 1;
    }
    if (csv != nullptr) {
        std::fprintf(csv, "instrument,plays,no_note,8_notes,32_notes,one_of_8,level_db\n");
    }
    try {
        compare(csv);
    } catch (const InputError& error) {
        std::fprintf(stderr, "zelvatone_instrument_bench: %s\n", error.what());
        return 1;
    }
    if (csv != nullptr) {
        std::fclose(csv);
    }
    return 0;
}
