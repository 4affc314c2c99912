// Live play on ALSA alone, with a card and keyboards that are none.
#include "host/Error.h"
#include "live/alsa/AlsaBackend.h"
#include "tests/live/FakeAlsa.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <thread>

namespace zelvatone {
namespace {

using std::chrono::milliseconds;
using ::testing::ElementsAre;
using ::testing::UnorderedElementsAre;

// Long, for a busy machine.
bool comesTrue(const std::function<bool()>& isTrue) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!isTrue()) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        std::this_thread::sleep_for(milliseconds(2));
    }
    return true;
}

std::vector<int> bytesOf(const snd_seq_event_t& event) {
    const auto message = channelMessage(event);
    return message ? std::vector<int>{message->status, message->data1, message->data2}
                   : std::vector<int>{};
}

// Bytes as MIDI 1.0 defines them; ALSA's bend is -8192 to 8191.
TEST(AlsaEvents, BecomeTheirMidiMessages) {
    EXPECT_THAT(bytesOf(noteEvent(SND_SEQ_EVENT_NOTEON, 0, 60, 100)), ElementsAre(0x90, 60, 100));
    EXPECT_THAT(bytesOf(noteEvent(SND_SEQ_EVENT_NOTEOFF, 15, 60, 3)), ElementsAre(0x8F, 60, 3));
    EXPECT_THAT(bytesOf(noteEvent(SND_SEQ_EVENT_KEYPRESS, 1, 60, 9)), ElementsAre(0xA1, 60, 9));
    EXPECT_THAT(bytesOf(controlEvent(SND_SEQ_EVENT_CONTROLLER, 2, 64, 127)),
                ElementsAre(0xB2, 64, 127));
    EXPECT_THAT(bytesOf(controlEvent(SND_SEQ_EVENT_PGMCHANGE, 3, 0, 41)), ElementsAre(0xC3, 41, 0));
    EXPECT_THAT(bytesOf(controlEvent(SND_SEQ_EVENT_CHANPRESS, 4, 0, 50)), ElementsAre(0xD4, 50, 0));
    for (const auto& [bend, low, high] :
         {std::array{-8192, 0, 0}, std::array{0, 0, 64}, std::array{8191, 127, 127}}) {
        EXPECT_THAT(bytesOf(controlEvent(SND_SEQ_EVENT_PITCHBEND, 5, 0, bend)),
                    ElementsAre(0xE5, low, high));
    }
}

TEST(AlsaEvents, AreNoMessagesWhenOfAnotherKind) {
    EXPECT_THAT(bytesOf(controlEvent(SND_SEQ_EVENT_CLOCK, 0, 0, 0)), ElementsAre());
    EXPECT_THAT(bytesOf(controlEvent(SND_SEQ_EVENT_SYSEX, 0, 0, 0)), ElementsAre());
}

class AlsaKeyboard : public ::testing::Test {
protected:
    static constexpr FakeAlsa::Address kFirst{20, 0};
    static constexpr FakeAlsa::Address kSecond{24, 1};

    bool isConnected(FakeAlsa::Address address) {
        return comesTrue([&] { return alsa.connections().count(address) == 1; });
    }
    // The next message, however many blocks it takes.
    MidiMessage nextMessage(AlsaKeyboards& keyboards) {
        std::array<MidiMessage, 1> message{};
        EXPECT_TRUE(comesTrue([&] { return keyboards.take(message, 256, 48000) == 1; }));
        return message[0];
    }

    FakeAlsa alsa;
    const alsa::Library library = alsa.library();
};

TEST_F(AlsaKeyboard, IsConnectedAtTheStart) {
    alsa.plugIn(kFirst, "Keys");
    AlsaKeyboards keyboards(library, {});
    EXPECT_THAT(keyboards.devices(), ElementsAre("Fake:Keys"));
    keyboards.start();
    ASSERT_TRUE(isConnected(kFirst));
    alsa.play(kFirst, noteEvent(SND_SEQ_EVENT_NOTEON, 0, 60, 100));
    EXPECT_EQ(nextMessage(keyboards).data1, 60);
    EXPECT_THAT(keyboards.takeNews(), ElementsAre("Fake:Keys"));
    EXPECT_EQ(keyboards.connected(), 1);
}

TEST_F(AlsaKeyboard, IsConnectedEachTimeItIsPluggedIn) {
    AlsaKeyboards keyboards(library, {});
    keyboards.start();
    ASSERT_TRUE(isConnected(FakeAlsa::kAnnouncements));
    for (int time = 0; time < 3; ++time) {
        alsa.plugIn(kFirst, "Keys");
        ASSERT_TRUE(isConnected(kFirst));
        alsa.unplug(kFirst);
        ASSERT_TRUE(comesTrue([&] { return keyboards.connected() == 0; }));
    }
}

// The second one makes it look at all again.
TEST_F(AlsaKeyboard, StaysDisconnectedWhenTheUserWantsIt) {
    alsa.plugIn(kFirst, "Keys");
    AlsaKeyboards keyboards(library, {});
    keyboards.start();
    ASSERT_TRUE(isConnected(kFirst));
    alsa.disconnect(kFirst);
    alsa.plugIn(kSecond, "More keys");
    ASSERT_TRUE(isConnected(kSecond));
    EXPECT_EQ(alsa.connections().count(kFirst), 0U);
}

TEST_F(AlsaKeyboard, IsChosenByAPartOfItsName) {
    alsa.plugIn(kFirst, "Keys");
    alsa.plugIn(kSecond, "Pads");
    AlsaKeyboards keyboards(library, {"PAD"});
    keyboards.start();
    ASSERT_TRUE(isConnected(kSecond));
    EXPECT_THAT(alsa.connections(), UnorderedElementsAre(FakeAlsa::kAnnouncements, kSecond));
}

// Our own port, the system's, one that only receives and one that is hidden.
TEST_F(AlsaKeyboard, IsNoPortThatDoesNotSend) {
    alsa.plugIn({21, 0}, "Speaker", SND_SEQ_PORT_CAP_WRITE | SND_SEQ_PORT_CAP_SUBS_WRITE);
    alsa.plugIn({22, 0}, "Hidden", FakeAlsa::kKeyboard | SND_SEQ_PORT_CAP_NO_EXPORT);
    alsa.plugIn(kSecond, "Keys");
    AlsaKeyboards keyboards(library, {});
    keyboards.start();
    ASSERT_TRUE(isConnected(kSecond));
    EXPECT_THAT(alsa.connections(), UnorderedElementsAre(FakeAlsa::kAnnouncements, kSecond));
}

TEST_F(AlsaKeyboard, IsHeardAgainAfterItsQueueWasFull) {
    alsa.plugIn(kFirst, "Keys");
    AlsaKeyboards keyboards(library, {});
    keyboards.start();
    ASSERT_TRUE(isConnected(kFirst));
    alsa.overrun();
    alsa.play(kFirst, noteEvent(SND_SEQ_EVENT_NOTEON, 0, 61, 100));
    EXPECT_EQ(nextMessage(keyboards).data1, 61);
    EXPECT_EQ(keyboards.lostMessages(), 1);
}

// Two messages that come 100 ms apart within one long block: at 1000 Hz, a frame is a millisecond.
// On a busy machine a thread may be late, so there are several attempts.
TEST_F(AlsaKeyboard, KeepsItsRhythm) {
    alsa.plugIn(kFirst, "Keys");
    AlsaKeyboards keyboards(library, {});
    keyboards.start();
    ASSERT_TRUE(isConnected(kFirst));
    std::array<MidiMessage, 8> messages{};
    bool isKept = false;
    for (int attempt = 0; attempt < 30 && !isKept; ++attempt) {
        keyboards.take(messages, 10000, 1000);
        alsa.play(kFirst, noteEvent(SND_SEQ_EVENT_NOTEON, 0, 60, 100));
        std::this_thread::sleep_for(milliseconds(100));
        alsa.play(kFirst, noteEvent(SND_SEQ_EVENT_NOTEON, 0, 62, 100));
        std::this_thread::sleep_for(milliseconds(100));
        const std::size_t count = keyboards.take(messages, 10000, 1000);
        isKept = count == 2 && messages[0].frame < 20 &&
                 std::abs(messages[1].frame - messages[0].frame - 100) < 20;
    }
    EXPECT_TRUE(isKept);
}

TEST_F(AlsaKeyboard, IsMissingWithoutASequencer) {
    alsa.hasSequencer = false;
    AlsaKeyboards keyboards(library, {});
    EXPECT_FALSE(keyboards.isOpen());
    EXPECT_THAT(keyboards.devices(), ElementsAre());
    keyboards.start();
    std::array<MidiMessage, 1> messages{};
    EXPECT_EQ(keyboards.take(messages, 64, 48000), 0U);
}

// Counts its blocks and keeps what was played.
class CountingClient final : public AudioClient {
public:
    void process(float* left, float* right, std::int32_t frames,
                 std::span<const MidiMessage> messages) noexcept override {
        std::fill_n(left, frames, 0.0F);
        std::fill_n(right, frames, 0.0F);
        ++blocks;
        lastFrames = frames;
        for (const MidiMessage& message : messages) {
            lastNote = message.data1;
        }
    }

    std::atomic<int> blocks{0};
    std::atomic<int> lastFrames{0};
    std::atomic<int> lastNote{-1};
};

class AlsaCard : public ::testing::Test {
protected:
    FakeAlsa alsa;
    CountingClient client;
};

TEST_F(AlsaCard, PlaysWhatKeyboardsSend) {
    alsa.plugIn({20, 0}, "Keys");
    AlsaBackend backend(alsa.library(), {.output = {}, .inputs = {}, .rate = {}, .buffer = 64});
    EXPECT_EQ(backend.format().rate, 48000);
    backend.start(client);
    ASSERT_TRUE(comesTrue([&] { return alsa.connections().count({20, 0}) == 1; }));
    alsa.play({20, 0}, noteEvent(SND_SEQ_EVENT_NOTEON, 0, 67, 100));
    EXPECT_TRUE(comesTrue([&] { return client.lastNote == 67; }));
    EXPECT_EQ(client.lastFrames, 64);
    EXPECT_EQ(backend.tend(), "playing from Fake:Keys");
    // 768 of the card's buffer and a block of 64, at 48 kHz
    EXPECT_DOUBLE_EQ(backend.status().latencySeconds, 832.0 / 48000.0);
}

TEST_F(AlsaCard, IsWaitedForWhenItIsUnpluggedInMidPlay) {
    AlsaBackend backend(alsa.library(), {});
    backend.start(client);
    ASSERT_TRUE(comesTrue([&] { return alsa.framesWritten > 1000; }));
    alsa.hasCard = false;
    std::string news;
    ASSERT_TRUE(comesTrue([&] { return !(news = backend.tend()).empty(); }));
    EXPECT_EQ(news, "the output has gone: waiting for it");
    EXPECT_FALSE(backend.status().isRunning);
    EXPECT_EQ(alsa.openPcms, 0);
    const int blocks = client.blocks;
    alsa.hasCard = true;
    ASSERT_TRUE(comesTrue([&] { return !(news = backend.tend()).empty(); }));
    EXPECT_EQ(news, "the output is back");
    EXPECT_TRUE(comesTrue([&] { return client.blocks > blocks + 3; }));
}

TEST_F(AlsaCard, IsCountedAsLateWhenItRunsOutOfSamples) {
    AlsaBackend backend(alsa.library(), {});
    alsa.lateWrites = 3;
    backend.start(client);
    EXPECT_TRUE(comesTrue([&] { return client.blocks > 5; }));
    EXPECT_EQ(backend.status().lateBlocks, 1); // one block, which took four attempts
    EXPECT_TRUE(backend.status().isRunning);
}

TEST_F(AlsaCard, IsClosedAtTheEnd) {
    {
        AlsaBackend backend(alsa.library(), {});
        backend.start(client);
        EXPECT_EQ(alsa.openPcms, 1);
    }
    EXPECT_EQ(alsa.openPcms, 0);
}

TEST_F(AlsaCard, IsPlayedThroughThePlugWhenItTakesNoFloats) {
    alsa.needsPlug = true;
    const AlsaBackend backend(alsa.library(),
                              {.output = "hw:1", .inputs = {}, .rate = {}, .buffer = {}});
    EXPECT_EQ(alsa.openName(), "plug:'hw:1'");
    EXPECT_EQ(backend.format().rate, 48000);
}

// Of a rate that the plug would convert the card's own is the better one.
TEST_F(AlsaCard, IsPlayedAtItsOwnRateUnlessOneIsChosen) {
    alsa.onlyRate = 44100;
    EXPECT_EQ(AlsaBackend(alsa.library(), {}).format().rate, 44100);
    alsa.onlyRate = 32000;
    EXPECT_EQ(AlsaBackend(alsa.library(), {}).format().rate, 48000);
    EXPECT_EQ(AlsaBackend(alsa.library(), {.output = {}, .inputs = {}, .rate = 96000, .buffer = {}})
                  .format()
                  .rate,
              96000);
}

TEST_F(AlsaCard, MayBeMissing) {
    alsa.hasCard = false;
    EXPECT_FALSE(AlsaBackend(alsa.library(), {}).isOpen());
}

TEST_F(AlsaCard, MayNotBeMissingWhenItWasChosen) {
    alsa.hasCard = false;
    const DeviceChoice choice{.output = "hw:7", .inputs = {}, .rate = {}, .buffer = {}};
    EXPECT_THROW(AlsaBackend(alsa.library(), choice), InputError);
}

TEST_F(AlsaCard, PlaysWithoutKeyboardsAndSaysSoOnce) {
    alsa.hasSequencer = false;
    AlsaBackend backend(alsa.library(), {});
    backend.start(client);
    EXPECT_THAT(backend.tend(), ::testing::StartsWith("no keyboards: "));
    EXPECT_EQ(backend.tend(), "");
    EXPECT_TRUE(comesTrue([&] { return client.blocks > 3; }));
}

// Blocks of 480 at 48 kHz are 10 ms each.
class AlsaPace : public ::testing::Test {
protected:
    using Clock = Pace::Clock;

    Pace pace{48000, 960};
    Clock::time_point now = Clock::now();
};

// 20 ms of buffer and 20 ms of tolerance: from the fifth block on the clock says when.
TEST_F(AlsaPace, HoldsADeviceThatTakesAllAtOnce) {
    const auto start = now;
    for (int block = 1; block <= 4; ++block) {
        EXPECT_FALSE(pace.afterBlock(480, now));
    }
    for (int block = 5; block <= 90; ++block) {
        const auto due = pace.afterBlock(480, now);
        ASSERT_TRUE(due);
        EXPECT_NEAR(std::chrono::duration<double>(*due - start).count(), 0.01 * block - 0.04, 1e-6);
        now = *due;
    }
}

// A thousandth faster than the clock, for an hour.
TEST_F(AlsaPace, LeavesACardToItsOwnClock) {
    for (int block = 0; block < 360000; ++block) {
        now += std::chrono::microseconds(9990);
        ASSERT_FALSE(pace.afterBlock(480, now)) << block;
    }
}

} // namespace
} // namespace zelvatone
