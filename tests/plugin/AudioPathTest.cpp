// What a block asks of the system, at the linked file: the memory of its list of parameters and of
// its events, and nothing else. Counted at the C library and, for what goes past it, at the kernel.
#include "tests/plugin/CallWatch.h"
#include "tests/plugin/LoadedPlugin.h"
#include "tests/plugin/PlainHost.h"

#include <array>
#include <csignal>
#include <cstddef>

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

constexpr VstInt32 kFrames = 64;
constexpr VstInt32 kLater = 1 << 30; // samples; hours after the test
constexpr int kRingSize = 256;       // events that can wait

class AudioPath : public testing::Test {
protected:
    ~AudioPath() override { plugin.ask(effClose); }

    void render(int blocks = 1) {
        for (int block = 0; block < blocks; ++block) {
            plugin.record->processReplacing(plugin.record, nullptr, outputs_.data(), kFrames);
        }
    }
    // The test's own lists are made before it counts.
    void send(EventList& events) { plugin.ask(effProcessEvents, 0, 0, events.record()); }

    template<class Action>
    static CallCounts during(Action action) {
        const CallCounts before = callCounts();
        action();
        return callCounts().since(before);
    }
    CallCounts duringEvents(EventList& events) {
        VstEvents* record = events.record();
        return during([&] { plugin.ask(effProcessEvents, 0, 0, record); });
    }
    // A block's list of 23 pointers, given back at its end.
    void expectOneListOnly(const CallCounts& counts, std::size_t blocks = 1) {
        EXPECT_EQ(counts.allocations, blocks);
        EXPECT_EQ(counts.releases, blocks);
        EXPECT_EQ(counts.memory, 0);
        EXPECT_EQ(counts.locks, 0U);
        EXPECT_EQ(counts.outputs, 0U);
    }
    void playAllVoices() {
        EventList notes;
        for (int note = 40; note < 72; ++note) {
            notes.add({0x90, note, 100});
        }
        send(notes);
        render(2);
    }
    EventList eventsLater(int count) {
        EventList events;
        for (int i = 0; i < count; ++i) {
            events.add({0x90, i & 127, 100, kLater});
        }
        return events;
    }

    HostedEffect plugin{PluginLibrary::get().entry()(plainHostCallback)};

private:
    std::array<float, kFrames> left_{};
    std::array<float, kFrames> right_{};
    std::array<float*, 2> outputs_{left_.data(), right_.data()};
};

TEST_F(AudioPath, SilentBlockAllocatesOneListOfParameters) {
    expectOneListOnly(during([this] { render(); }));
}

TEST_F(AudioPath, BlockWithEveryVoiceAllocatesTheSame) {
    playAllVoices();
    expectOneListOnly(during([this] { render(100); }), 100);
}

TEST_F(AudioPath, BlockThatShiftsModesAndRebuildsTheWaveAllocatesTheSame) {
    constexpr VstInt32 modeShift = 0;
    constexpr VstInt32 wave = 13;
    constexpr VstInt32 crush = 14;
    playAllVoices();
    plugin.setParameter(modeShift, 1.0F);
    plugin.setParameter(wave, 0.5F);
    plugin.setParameter(crush, 0.5F);
    expectOneListOnly(during([this] { render(500); }), 500);
}

TEST_F(AudioPath, MessageAllocatesItsEventUntilItActs) {
    EventList notes({{0x90, 60, 100}, {0xE0, 0, 70}, {0x80, 60, 0}, {0xB0, 64, 127}});
    const CallCounts sent = duringEvents(notes);
    EXPECT_EQ(sent.allocations, 3U); // a controller is none
    EXPECT_EQ(sent.releases, 0U);
    EXPECT_EQ(sent.locks + sent.outputs, 0U);

    const CallCounts acted = during([this] { render(); });
    EXPECT_EQ(acted.allocations, 1U);
    EXPECT_EQ(acted.releases, 4U);
    EXPECT_EQ(acted.memory, -sent.memory);
}

TEST_F(AudioPath, BlockWithAFullRingAllocatesTheListAndTheLostEvents) {
    EventList waiting = eventsLater(kRingSize);
    EXPECT_EQ(duringEvents(waiting).allocations, std::size_t{kRingSize});
    EventList more = eventsLater(1000);
    const CallCounts lost = duringEvents(more);
    EXPECT_EQ(lost.allocations, 1000U);
    EXPECT_EQ(lost.releases, 1000U);
    EXPECT_EQ(lost.memory, 0);
    expectOneListOnly(during([this] { render(20); }), 20);
}

TEST_F(AudioPath, KeepsNoMoreThanAFullRingWhateverAHostSends) {
    EventList flood = eventsLater(5000);
    flood.record();
    const CallCounts once = during([&] { send(flood); });
    EXPECT_GT(once.memory, 0);
    EXPECT_LE(once.memory, kRingSize * 64); // bytes; an event is smaller than that
    EXPECT_EQ(during([&] {
                  for (int i = 0; i < 100; ++i) {
                      send(flood);
                      render();
                  }
              }).memory,
              0);
}

TEST_F(AudioPath, KeepsNothingOfSixteenTimesAllNotesOff) {
    EventList off;
    for (int channel = 0; channel < 16; ++channel) {
        off.add({0xB0 | channel, 123, 0});
    }
    off.record();
    playAllVoices();
    EXPECT_EQ(during([&] {
                  for (int i = 0; i < 100; ++i) {
                      send(off);
                      render(8); // half of what is due acts at a sample: all of it, in the end
                  }
              }).memory,
              0);
}

// The exit status: that of a system call by its number, or this.
constexpr int kWithoutSystemCalls = 255;

void endWithTheNumber(int /*signal*/, siginfo_t* info, void* /*context*/) {
    _exit(info->si_syscall);
}

// From here on this process may do nothing but end.
void forbidSystemCalls() {
    struct sigaction action = {};
    action.sa_sigaction = endWithTheNumber;
    action.sa_flags = SA_SIGINFO;
    sigaction(SIGSYS, &action, nullptr);
    std::array<sock_filter, 4> rules = {{
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_exit_group, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_TRAP),
    }};
    const sock_fprog program = {rules.size(), rules.data()};
    if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 ||
        prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program, 0, 0) != 0) {
        _exit(1);
    }
}

TEST_F(AudioPath, MakesNoSystemCall) {
    // The first programs: later ones run to frequencies that the engine tells on standard output.
    constexpr VstInt32 kProgramsToPlay = 10;
    EventList notes({{0x90, 60, 100, 3}, {0xE0, 0, 70, 9}, {0x90, 67, 90, 40}, {0x80, 67, 0, 50}});
    EventList flood = eventsLater(1000);
    const auto playPrograms = [&] {
        for (VstInt32 program = 0; program < kProgramsToPlay; ++program) {
            plugin.ask(effSetProgram, 0, program);
            send(notes);
            render(50);
        }
        send(flood);
        render();
    };
    playPrograms(); // the heap has grown to what it takes
    EXPECT_EXIT(
        {
            forbidSystemCalls();
            playPrograms();
            _exit(kWithoutSystemCalls);
        },
        testing::ExitedWithCode(kWithoutSystemCalls), "");
}

TEST_F(AudioPath, WouldBeSeenToMakeASystemCall) {
    EXPECT_EXIT(
        {
            forbidSystemCalls();
            syscall(SYS_gettid);
            _exit(kWithoutSystemCalls);
        },
        testing::ExitedWithCode(SYS_gettid), "");
}

} // namespace
