// Events in the middle of the fast renderer's runs against the same events in the reference
// renderer: dense crowds of notes and bends, in an order that hosts may send.
#include "params/ParameterTable.h"
#include "tests/engine/EngineFixture.h"
#include "tests/kernel/EngineState.h"
#include "tests/kernel/Kernels.h"
#include "tests/kernel/PrintedLines.h"
#include "tests/kernel/Random.h"

#include <array>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <vector>

using namespace zelvatone;

namespace {

constexpr std::int32_t kMostSamples = 300;

// An engine and what it renders.
class Player {
public:
    explicit Player(Renderer renderer) : engine(renderer) {}
    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;

    void play(std::int32_t samples) {
        std::array<float*, 2> outputs = {left.data(), right.data()};
        engine.render(nullptr, outputs.data(), samples);
    }
    // Lets `action` happen to this engine where an event of another kind would.
    void at(std::int32_t offset, const std::function<void(ZelvatoneEngine&)>& action) {
        actions_.push_back(std::make_unique<std::function<void()>>([=, this] { action(engine); }));
        auto* event = new test::CallbackEvent(actions_.back().get());
        if (engine.events.write({offset, event}) == 0) { // a full ring: lost, as any other event
            SynthEvent::destroy(event);
        }
    }

    ZelvatoneEngine engine;
    std::array<float, kMostSamples> left{};
    std::array<float, kMostSamples> right{};

private:
    std::vector<std::unique_ptr<std::function<void()>>> actions_;
};

class EventsInRuns : public EachKernel {
protected:
    using Action = std::function<void(ZelvatoneEngine&)>;

    void both(const Action& action) {
        action(reference_.engine);
        action(fast_.engine);
    }
    void set(ParameterIndex index, float units) {
        both([=](ZelvatoneEngine& engine) {
            engine.currentProgram->parameters[index]->setValue(units);
        });
    }
    // Short attacks and fades, so that much happens within a block.
    void begin(float rate, std::int32_t program) {
        both([=](ZelvatoneEngine& engine) {
            engine.setSampleRate(rate);
            engine.setProgram(program);
            engine.setTempo(480.0F);
        });
        for (const ParameterIndex index : {kAttack, kDecay, kRelease}) {
            set(index, 0.01F);
        }
    }
    void expectSameBlock(std::int32_t samples) {
        reference_.play(samples);
        const std::string expectedLines = printed_.take();
        fast_.play(samples);
        const std::string lines = printed_.take();
        ASSERT_EQ(differenceInSamples(reference_.left.data(), fast_.left.data(), samples), "");
        ASSERT_EQ(differenceInState(reference_.engine, fast_.engine), "");
        ASSERT_TRUE(lines == expectedLines); // may be too much to print
        printedBytes_ += lines.size();
    }

    Player reference_{Renderer::kReference};
    Player fast_{GetParam()};
    Random random_{1};
    PrintedLines printed_;
    std::size_t printedBytes_ = 0;
};

TEST_P(EventsInRuns, LetANoteBeginAndEndAtItsSamples) {
    begin(48000.0F, 0);
    both([](ZelvatoneEngine& engine) {
        engine.queueNoteOn(60, 100, 20);
        engine.queueNoteOn(64, 100, 30);
        engine.queueNoteOff(60, 40);
        engine.queuePitchBend(0.5F, 50);
        engine.queueNoteOff(64, 60);
    });
    for (int block = 0; block < 12; ++block) {
        expectSameBlock(64);
    }
    EXPECT_EQ(test::slotsAt(fast_.engine, kFreeSlot), 32); // both fades are over
}

TEST_P(EventsInRuns, MayEndANoteBeforeItBegins) {
    begin(48000.0F, 0);
    both([](ZelvatoneEngine& engine) {
        engine.queueNoteOff(60, 10);
        engine.queueNoteOn(60, 100, 12);
        engine.queueNoteOn(61, 100, 20); // and in one pass: the fade of the slot's old level
        engine.queueNoteOff(61, 20);
    });
    for (int block = 0; block < 4; ++block) {
        expectSameBlock(64);
    }
    EXPECT_EQ(test::slotsAt(fast_.engine, 60), 1);
}

// Slots become free one sample after a fade's end, in the middle of a run too.
TEST_P(EventsInRuns, FindSlotsFreeOnlyAfterTheirFades) {
    begin(48000.0F, 0);
    for (std::int32_t offset = 0; offset < 40; ++offset) {
        both([=](ZelvatoneEngine& engine) {
            for (std::int32_t note = 0; note < ZelvatoneEngine::kVoiceCount; ++note) {
                engine.noteOn(note, 100);
            }
            engine.queueNoteOff(31, 1);                // fades for 480 samples
            engine.queueNoteOn(100, 90, 465 + offset); // may come too early for its slot
            engine.queueNoteOn(101, 90, 465 + offset + 9);
        });
        for (int block = 0; block < 3; ++block) {
            expectSameBlock(200);
        }
        both([](ZelvatoneEngine& engine) {
            for (std::int32_t note = 0; note < 128; ++note) {
                engine.noteOff(note);
            }
        });
        for (int block = 0; block < 3; ++block) {
            expectSameBlock(200);
        }
        ASSERT_FALSE(HasFailure()) << offset;
    }
}

TEST_P(EventsInRuns, BendAllNotesAtOnce) {
    begin(48000.0F, 0);
    for (const std::int32_t note : {30, 60, 90, 120}) {
        both([=](ZelvatoneEngine& engine) { engine.noteOn(note, 100); });
    }
    for (std::int32_t offset = 0; offset < 100; offset += 2) {
        const float amount = random_.fraction() * 2.0F - 1.0F;
        both([=](ZelvatoneEngine& engine) { engine.queuePitchBend(amount, offset); });
    }
    for (int block = 0; block < 4; ++block) {
        expectSameBlock(64);
    }
}

// A MIDI pitch bend is always finite. Infinite and NaN bends, sent past MIDI, make phases NaN.
TEST_P(EventsInRuns, TakeAnyBend) {
    begin(48000.0F, 0);
    both([](ZelvatoneEngine& engine) { engine.noteOn(60, 100); });
    for (const float amount : {2.0F, 10.0F, 200.0F, std::numeric_limits<float>::infinity(), -3.0F,
                               -200.0F, std::numeric_limits<float>::quiet_NaN()}) {
        both([=](ZelvatoneEngine& engine) {
            engine.queuePitchBend(amount, 20);
            engine.queuePitchBend(0.0F, 40);
            engine.queueNoteOn(72, 100, 44);
            engine.queueNoteOff(72, 60);
        });
        expectSameBlock(100);
    }
    EXPECT_GT(printedBytes_, 0U); // look-ups failed
}

TEST_P(EventsInRuns, LeaveEventsOfOtherKindsTheirSample) {
    begin(48000.0F, 0);
    both([](ZelvatoneEngine& engine) { engine.noteOn(60, 100); });
    for (Player* player : {&reference_, &fast_}) {
        player->engine.queueNoteOn(67, 100, 20);
        player->at(30, [](ZelvatoneEngine& engine) {
            engine.voices[31]->phase[0] = 1.0F; // nothing that an engine's own events would do
            engine.envelopes[31]->velocity = 0.3;
            engine.noteOff(60);
        });
        player->engine.queueNoteOff(67, 35);
    }
    expectSameBlock(64);
    expectSameBlock(64);
}

// A crowd of messages for one block, of few notes so that many find theirs.
class Crowd {
public:
    explicit Crowd(Random& random) : random_(random) {}

    // Queues one event in both engines.
    void send(Player& reference, Player& fast, std::int32_t samples) {
        const std::int32_t offset = random_.oneIn(10)
                                        ? random_.oneOf({-1, 0, INT32_MIN, samples, 2 * samples})
                                        : random_.below(samples);
        const std::int32_t note =
            random_.oneIn(50) ? random_.oneOf({-2, -1, 127, 1000}) : random_.between(60, 66);
        const std::int32_t kind = random_.below(9);
        const std::int32_t velocity = random_.between(1, 127);
        const float bend = random_.oneIn(30) ? random_.oneOf({4.0F, -4.0F, 1000.0F})
                                             : random_.fraction() * 2.0F - 1.0F;
        for (Player* player : {&reference, &fast}) {
            queue(*player, kind, offset, note, velocity, bend);
        }
    }

private:
    static void queue(Player& player, std::int32_t kind, std::int32_t offset, std::int32_t note,
                      std::int32_t velocity, float bend) {
        if (kind < 4) {
            player.engine.queueNoteOn(note, velocity, offset);
        } else if (kind < 7) {
            player.engine.queueNoteOff(note, offset);
        } else if (kind == 7) {
            player.engine.queuePitchBend(bend, offset);
        } else {
            player.at(offset, [=](ZelvatoneEngine& engine) { engine.noteOn(note, velocity); });
        }
    }

    Random& random_;
};

TEST_P(EventsInRuns, AreTheReferenceRenderersInRandomCrowds) {
    constexpr int kBlocks = 40;
    for (int scenario = 0; scenario < 24; ++scenario) {
        begin(random_.oneOf({2000.0F, 8000.0F, 44100.0F, 96000.0F}), random_.below(42));
        Crowd crowd(random_);
        const std::int32_t most = random_.oneOf({2, 8, 40, 256});
        for (int block = 0; block < kBlocks; ++block) {
            const std::int32_t samples = random_.between(1, kMostSamples);
            for (std::int32_t i = random_.below(most + 1); i > 0; --i) {
                crowd.send(reference_, fast_, samples);
            }
            expectSameBlock(samples);
            ASSERT_FALSE(HasFailure()) << "scenario " << scenario << ", block " << block;
        }
    }
}

ZELVATONE_FOR_EACH_KERNEL(EventsInRuns);

} // namespace
