// What live play asks of the system on the audio thread: nothing. Counted at the C library and, for
// what goes past it, at the kernel.
#include "live/player/LivePlayer.h"
#include "tests/live/TakeSession.h"
#include "tests/plugin/CallWatch.h"
#include "tests/support/Program.h"

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <cstddef>
#include <span>
#include <vector>

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace zelvatone {
namespace {

constexpr int kBlock = 64;
constexpr StreamFormat kFormat{48000.0, kBlock};

class LiveInstrument {
public:
    explicit LiveInstrument(const std::string& path) : library_(path) {}

    // Blocks with every kind of message, moves from the user's thread and a song, which are
    // recorded. Returns what that took, without what the user's thread did.
    CallCounts play(int blocks) {
        constexpr std::array<MidiMessage, 9> kMessages{
            {{.frame = 0, .status = kNoteOnStatus, .data1 = 60, .data2 = 100},
             {.frame = 0, .status = kControllerStatus, .data1 = 74, .data2 = 99},
             {.frame = 3, .status = kControllerStatus, .data1 = kVolume, .data2 = 90},
             {.frame = 9, .status = kControllerStatus, .data1 = kSustainPedal, .data2 = 127},
             {.frame = 20, .status = kBendStatus, .data1 = 0, .data2 = 70},
             {.frame = 30, .status = kProgramStatus, .data1 = 0, .data2 = 0},
             {.frame = 40, .status = kNoteOffStatus, .data1 = 60, .data2 = 0},
             {.frame = 50, .status = kControllerStatus, .data1 = kAllSoundOff, .data2 = 0},
             {.frame = 63,
              .status = kControllerStatus,
              .data1 = kResetAllControllers,
              .data2 = 0}}};
        return play(blocks, kMessages);
    }
    CallCounts play(int blocks, std::span<const MidiMessage> messages) {
        CallCounts all;
        for (int block = 0; block < blocks; ++block) {
            player_.send({.kind = LiveCommand::Kind::kMove,
                          .parameter = 0,
                          .value = 0.25F * static_cast<float>(block % 4)});
            const CallCounts before = callCounts();
            player_.process(left_.data(), right_.data(), kBlock, messages);
            const CallCounts taken = callCounts().since(before);
            all.allocations += taken.allocations;
            all.releases += taken.releases;
            all.locks += taken.locks;
            all.outputs += taken.outputs;
            all.memory += taken.memory;
            LiveNotice notice{};
            while (player_.takeNotice(notice)) {
            }
        }
        return all;
    }

private:
    static Song shortSong() {
        Song song = songWithoutEvents();
        for (int note = 0; note < 50; ++note) {
            song.add(0.003 * note,
                     std::vector<std::uint8_t>{0x90, static_cast<std::uint8_t>(40 + note), 80});
        }
        return song;
    }
    static ControllerMap controllers() {
        ControllerMap map = noControllers();
        map.at(74) = 0;
        return map;
    }

    const PluginLibrary library_;
    HostedPlugin plugin_{library_, kFormat};
    HostedPlugin spare_{library_, kFormat};
    const Song song_ = shortSong();
    TakeRings take_{48000, 2, 4.0};
    LivePlayer player_{{.plugin = &plugin_,
                        .spare = &spare_,
                        .song = &song_,
                        .take = &take_,
                        .programs = programsByNumber(plugin_.programCount()),
                        .controllers = controllers()}};
    std::array<float, kBlock> left_{};
    std::array<float, kBlock> right_{};
};

TEST(LiveAudioThread, TakesNoMemoryNoLockAndPrintsNothing) {
    LiveInstrument instrument(testPlugin("quiet"));
    instrument.play(1); // functions of libraries are bound when they are called first
    const CallCounts counts = instrument.play(500);
    EXPECT_EQ(counts.allocations, 0U);
    EXPECT_EQ(counts.releases, 0U);
    EXPECT_EQ(counts.locks, 0U);
    EXPECT_EQ(counts.outputs, 0U);
}

// The instrument takes memory for its events, and gives it back.
TEST(LiveAudioThread, DoesNotGrowAndTakesNoLockWithTheInstrument) {
    constexpr std::array<MidiMessage, 3> kNotes{
        {{.frame = 0, .status = kNoteOnStatus, .data1 = 60, .data2 = 100},
         {.frame = 20, .status = kBendStatus, .data1 = 0, .data2 = 70},
         {.frame = 40, .status = kNoteOffStatus, .data1 = 60, .data2 = 0}}};
    LiveInstrument instrument(TEST_INSTRUMENT);
    instrument.play(300); // the song is over
    instrument.play(10, {});
    const CallCounts counts = instrument.play(100, kNotes);
    EXPECT_EQ(counts.memory, 0);
    EXPECT_EQ(counts.allocations, counts.releases);
    EXPECT_EQ(counts.locks, 0U);
    EXPECT_EQ(counts.outputs, 0U);
}

// The exit status: that of a system call by its number, or this.
constexpr int kWithoutSystemCalls = 255;

void endWithTheNumber(int /*signal*/, siginfo_t* info, void* /*context*/) {
    _exit(info->si_syscall);
}

// From here on this process may do nothing but read the clock, where that is a system call, and
// end.
void forbidSystemCalls() {
    struct sigaction action = {};
    action.sa_sigaction = endWithTheNumber;
    action.sa_flags = SA_SIGINFO;
    sigaction(SIGSYS, &action, nullptr);
    std::array<sock_filter, 5> rules = {{
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_exit_group, 1, 0),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_clock_gettime, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_TRAP),
    }};
    const sock_fprog program = {rules.size(), rules.data()};
    if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 ||
        prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program, 0, 0) != 0) {
        _exit(1);
    }
}

// Files, pipes, other threads, the scheduler: nothing of it goes without one.
TEST(LiveAudioThread, MakesNoSystemCall) {
    LiveInstrument instrument(testPlugin("quiet"));
    instrument.play(1);
    EXPECT_EXIT(
        {
            forbidSystemCalls();
            instrument.play(500);
            _exit(kWithoutSystemCalls);
        },
        testing::ExitedWithCode(kWithoutSystemCalls), "");
}

TEST(LiveAudioThread, WouldBeSeenToMakeASystemCall) {
    EXPECT_EXIT(
        {
            forbidSystemCalls();
            syscall(SYS_sched_yield);
            _exit(kWithoutSystemCalls);
        },
        testing::ExitedWithCode(SYS_sched_yield), "");
}

} // namespace
} // namespace zelvatone
