#include "web/engine/PhraseRenderer.h"

#include "formats/Instrument.h"
#include "performance/Phrase.h"

#include <algorithm>
#include <cmath>

namespace zelvatone {

namespace {

// A browser asks for so many samples at a time.
constexpr std::int32_t kBlock = 128;

std::int32_t frameAt(double seconds) {
    return static_cast<std::int32_t>(std::lround(seconds * kPhraseRate));
}

} // namespace

std::vector<MidiMessage> phraseMessages() {
    std::vector<MidiMessage> messages;
    for (const PhraseNote& note : kPhraseNotes) {
        messages.push_back(
            midiMessage(frameAt(note.start), kNoteOnStatus, note.key, kPhraseVelocity));
        messages.push_back(midiMessage(frameAt(note.end), kNoteOffStatus, note.key, 0));
    }
    std::stable_sort(messages.begin(), messages.end(),
                     [](const auto& a, const auto& b) { return a.frame < b.frame; });
    return messages;
}

std::vector<float> renderPhrase(std::int32_t program) {
    Instrument instrument(Instrument::ProgramChange::kIgnored);
    instrument.setSampleRate(kPhraseRate);
    instrument.loadProgram(program);
    const std::vector<MidiMessage> messages = phraseMessages();
    auto next = messages.begin();
    std::vector<float> samples(static_cast<std::size_t>(frameAt(kPhraseSeconds)));
    const auto count = static_cast<std::int32_t>(samples.size());
    for (std::int32_t first = 0; first < count; first += kBlock) {
        const std::int32_t frames = std::min(kBlock, count - first);
        float* out = samples.data() + first;
        instrument.beginBlock(out, out, frames);
        for (; next != messages.end() && next->frame < first + frames; ++next) {
            MidiMessage message = *next;
            message.frame -= first;
            instrument.midiAt(message);
        }
        instrument.endBlock();
    }
    return samples;
}

} // namespace zelvatone
