// A random performance, played by the reference engine and by fast ones at once.
#pragma once

#include "tests/kernel/Fingerprint.h"
#include "tests/kernel/PrintedLines.h"
#include "tests/kernel/Random.h"

#include "engine/ZelvatoneEngine.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

// The fast renderers that this processor has; with ZELVATONE_KERNEL in the environment, that one
// alone.
std::vector<zelvatone::Renderer> renderersUnderTest();

// Everything that hosts, players and broken values can do to an engine, chosen by a seed: notes in
// crowds and alone, bends, events that are overdue or far ahead, any program, knobs between blocks,
// tempo and sample rate, frequencies that run away, values that are not numbers.
class Scenario {
public:
    explicit Scenario(std::uint64_t seed);

    // Plays until about `modeSamples` samples of single modes have been rendered. Returns what was
    // different first between the reference engine and another; nothing if all bits were the same.
    std::string play(std::int64_t modeSamples);
    // Of everything that the reference engine has put out: the same on every platform.
    const Fingerprint& fingerprint() const { return fingerprint_; }

private:
    using Engine = zelvatone::ZelvatoneEngine;

    // What kind of performance it is.
    struct Temper {
        std::int32_t longestBlock;
        std::int32_t crowd;    // most notes started at once
        std::int32_t knobs;    // one block in so many turns some
        std::int32_t breakage; // one block in so many breaks a value; 0: none does
        std::int32_t runaways; // one block in so many sends frequencies far away; 0: none does
        bool manyModes;
    };

    template<class Action>
    void forAll(Action action);
    void prepare();
    void act();
    void playNotes();
    void sendMidiOfAnyData(std::int32_t status);
    void sendMidi(std::int32_t status, std::int32_t data1, std::int32_t data2);
    std::int32_t someOffset();
    void turnKnob();
    void setKnob(std::int32_t index, float normalised);
    void driveAway();
    void scaleFrequencies();
    void breakSomething();
    void breakMode();
    // Lets every engine render the next block; returns what was different, if anything was.
    std::string renderBlock(std::int32_t samples);
    struct Block;
    Block render(Engine& engine, std::int32_t samples);
    std::int64_t activeModes() const;

    Random random_;
    Temper temper_;
    std::vector<std::unique_ptr<Engine>> engines_; // the reference renderer first
    std::vector<std::string> names_;
    PrintedLines printed_;
    std::size_t printedBytes_ = 0;
    Fingerprint fingerprint_;
};
