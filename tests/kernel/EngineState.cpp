#include "tests/kernel/EngineState.h"

#include "tests/kernel/SameBits.h"

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

using namespace zelvatone;

namespace {

// The bits of `value` as text.
template<class Value>
std::string bitsOf(const Value& value) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof value);
    char text[24];
    std::snprintf(text, sizeof text, "0x%0*llx", static_cast<int>(2 * sizeof value),
                  static_cast<unsigned long long>(bits));
    return text;
}

// Notes the first difference it is shown.
class Differences {
public:
    template<class Value>
    void compare(const char* name, const Value& expected, const Value& actual) {
        compareAll(name, &expected, &actual, 1);
    }
    template<class Value>
    void compareAll(const char* name, const Value* expected, const Value* actual,
                    std::size_t count) {
        if (!first.empty() || count == 0) {
            return;
        }
        std::size_t i = 0;
        while (i < count && sameBits(expected[i], actual[i])) {
            ++i;
        }
        if (i == count) {
            return;
        }
        first = owner + name + '[' + std::to_string(i) + "] is " + bitsOf(actual[i]) +
                " instead of " + bitsOf(expected[i]);
    }
    template<class List>
    void compareAll(const char* name, const List& expected, const List& actual) {
        compareAll(name, expected.data(), actual.data(), expected.size());
    }

    std::string owner; // of what is compared next
    std::string first;
};

void compareVoices(Differences& differences, const ModeVoice& expected, const ModeVoice& actual) {
    differences.compareAll("amp", expected.amp, actual.amp);
    differences.compareAll("freq", expected.freq, actual.freq);
    differences.compareAll("phase", expected.phase, actual.phase);
    differences.compareAll("ampStep", expected.ampStep, actual.ampStep);
    differences.compareAll("freqStep", expected.freqStep, actual.freqStep);
    differences.compareAll("targetAmp", expected.targetAmp, actual.targetAmp);
    differences.compareAll("targetFreq", expected.targetFreq, actual.targetFreq);
    differences.compare("capacity", expected.capacity, actual.capacity);
    differences.compare("gain", expected.gain, actual.gain);
    differences.compare("baseFreq", expected.baseFreq, actual.baseFreq);
    differences.compare("activeCount", expected.activeCount, actual.activeCount);
    differences.compare("targetCount", expected.targetCount, actual.targetCount);
    differences.compare("time", expected.time, actual.time);
    differences.compareAll("reportedModes", expected.reportedModes.words,
                           actual.reportedModes.words);
}

void compareEnvelopes(Differences& differences, const ADSR& expected, const ADSR& actual) {
    differences.compare("time", expected.time, actual.time);
    differences.compare("state", expected.state, actual.state);
    differences.compare("velocity", expected.velocity, actual.velocity);
    differences.compare("level", expected.level, actual.level);
}

// The waits in the order in which they will be read.
std::vector<std::int32_t> waitsIn(EventRing ring) {
    std::vector<std::int32_t> waits;
    for (EventRing::Entry entry{}; ring.read(entry) != 0;) {
        waits.push_back(entry.framesLeft);
    }
    return waits;
}

void compareEvents(Differences& differences, const EventRing& expected, const EventRing& actual) {
    const std::vector<std::int32_t> expectedWaits = waitsIn(expected);
    const std::vector<std::int32_t> actualWaits = waitsIn(actual);
    differences.compare("number of waiting events", expectedWaits.size(), actualWaits.size());
    differences.compareAll("waits of events", expectedWaits, actualWaits);
}

} // namespace

std::string differenceInState(const ZelvatoneEngine& expected, const ZelvatoneEngine& actual) {
    Differences differences;
    compareEvents(differences, expected.events, actual.events);
    differences.compareAll("notes of slots", expected.voiceNotes, actual.voiceNotes);
    differences.compare("bend", expected.settings->bendRatio, actual.settings->bendRatio);
    for (std::int32_t slot = 0; slot < ZelvatoneEngine::kVoiceCount; ++slot) {
        differences.owner = "slot " + std::to_string(slot) + ", ";
        compareVoices(differences, *expected.voices[slot], *actual.voices[slot]);
        compareEnvelopes(differences, *expected.envelopes[slot], *actual.envelopes[slot]);
    }
    return differences.first;
}

std::string differenceInSamples(const float* expected, const float* actual, std::int32_t count) {
    Differences differences;
    differences.compareAll("samples", expected, actual, static_cast<std::size_t>(count));
    return differences.first;
}
