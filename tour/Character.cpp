#include "tour/Character.h"

#include "host/text/Format.h"

#include <array>

namespace zelvatone {

namespace {

// All limits lie in gaps between the factory programs, where one was wide enough.
constexpr double kPluckedSeconds = 0.75;
constexpr double kEndlessDecibels = 6.0;
constexpr double kSwellingSeconds = 0.25;
constexpr double kRingingSeconds = 0.5;
constexpr double kStruckSeconds = 0.05;
constexpr double kFastestRhythm = 8.0; // a second: sixteenths at 120

using M = NoteMeasures;

bool isPlucked(const M& m) {
    return m.fallSeconds <= kPluckedSeconds;
}

bool isRinging(const M& m) {
    return m.ringSeconds > kRingingSeconds;
}

bool isSweeping(const M& m) {
    return m.sweepOctaves >= 0.75;
}

bool isNoisy(const M& m) {
    return m.tonalShare < 0.5;
}

// How a note goes on, then its colour, then what moves in it.
constexpr std::array kTags{
    CharacterTag{"plucked", "falls by 20 dB within 0.75 s while the key is held", isPlucked},
    CharacterTag{"fading", "sinks by more than 6 dB while the key is held, but is not plucked",
                 [](const M& m) { return m.sunkDecibels > kEndlessDecibels && !isPlucked(m); }},
    CharacterTag{"swelling", "takes 0.25 s or more to come within 6 dB of its loudest",
                 [](const M& m) { return m.riseSeconds >= kSwellingSeconds; }},
    CharacterTag{"endless", "is within 6 dB of its loudest as long as the key is held",
                 [](const M& m) { return m.sunkDecibels <= kEndlessDecibels; }},
    CharacterTag{"ringing", "takes more than 0.5 s to fall by 30 dB after the key is released",
                 isRinging},
    CharacterTag{"bell",
                 "is at its loudest within 0.05 s, sinks by 1.5 dB or more while the key is held, "
                 "rings on after it, and has a tenth of its power above 165 Hz",
                 [](const M& m) {
                     return m.riseSeconds <= kStruckSeconds && m.sunkDecibels >= 1.5 &&
                            isRinging(m) && m.lowShare <= 0.9;
                 }},
    CharacterTag{"bass", "has two fifths of its power below 165 Hz, a fourth below the key",
                 [](const M& m) { return m.lowShare >= 0.4; }},
    CharacterTag{"bright", "has a thirtieth of its power above 2 kHz",
                 [](const M& m) { return m.highShare >= 1.0 / 30.0; }},
    CharacterTag{"mellow", "has less than a thousandth of its power above 2 kHz",
                 [](const M& m) { return m.highShare < 0.001; }},
    CharacterTag{"pure", "has nine tenths of its power in one partial",
                 [](const M& m) { return m.strongestShare >= 0.9; }},
    CharacterTag{"hollow",
                 "has a third partial that is 5 dB or more above the second, and at most 30 dB "
                 "below the strongest",
                 [](const M& m) {
                     return m.thirdDecibels >= -30.0 && m.thirdDecibels >= m.secondDecibels + 5.0;
                 }},
    CharacterTag{
        "metallic",
        "has an eighth of its power in upper partials between the harmonics, and neither "
        "sweeps nor is noisy",
        [](const M& m) { return m.metallicShare >= 0.125 && !isSweeping(m) && !isNoisy(m); }},
    CharacterTag{"noisy", "has less than half of a moment's power in its five strongest partials",
                 isNoisy},
    CharacterTag{"sweeping", "moves the middle of its spectrum by nine semitones or more",
                 isSweeping},
    CharacterTag{
        "rhythmic", "changes its colour in a pattern that repeats 1 to 8 times a second",
        [](const M& m) { return m.pulsesPerSecond > 0.0 && m.pulsesPerSecond <= kFastestRhythm; }},
    CharacterTag{"fluttering",
                 "changes its colour in a pattern that repeats more than 8 times a second",
                 [](const M& m) { return m.pulsesPerSecond > kFastestRhythm; }},
};

// "Plucked, bass", "Without a tag": the first letter large.
std::string heading(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names) {
        text += (text.empty() ? "" : ", ") + name;
    }
    if (!text.empty()) {
        text[0] = static_cast<char>(text[0] - 'a' + 'A');
    }
    return text;
}

} // namespace

std::span<const CharacterTag> characterTags() {
    return kTags;
}

std::vector<std::string> charactersOf(const NoteMeasures& measures) {
    std::vector<std::string> names;
    for (const CharacterTag& tag : kTags) {
        if (!measures.isSilent && tag.applies(measures)) {
            names.emplace_back(tag.name);
        }
    }
    return names;
}

std::string descriptionOf(const NoteMeasures& measures) {
    if (measures.isSilent) {
        return "Silent.";
    }
    const std::string tags = heading(charactersOf(measures));
    std::string text = tags.empty() ? "" : tags + ". ";
    text += isNoisy(measures) ? formatText("Strongest near {:.0f} Hz", measures.strongestHz)
                              : formatText("Strongest at {:.0f} Hz", measures.strongestHz);
    if (measures.riseSeconds >= kSwellingSeconds) {
        text += formatText("; rises for {:.1f} s", measures.riseSeconds);
    }
    if (measures.fallSeconds < kHeldSeconds) {
        text += formatText("; down by 20 dB after {:.1f} s", measures.fallSeconds);
    }
    if (isRinging(measures)) {
        text += formatText("; rings on for {:.1f} s", measures.ringSeconds);
    }
    if (isSweeping(measures)) {
        text += formatText("; sweeps over {:.1f} octaves", measures.sweepOctaves);
    }
    if (measures.pulsesPerSecond > 0.0) {
        text += formatText("; {:.1f} pulses a second", measures.pulsesPerSecond);
    }
    return text + ".";
}

} // namespace zelvatone
