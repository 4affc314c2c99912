#include "host/render/Performer.h"

#include "host/Error.h"
#include "host/plugin/FullNames.h"
#include "host/plugin/Programs.h"
#include "host/render/Silence.h"

#include <algorithm>
#include <cmath>

namespace zelvatone {

namespace {

// A stopped sound is waited for no longer: twice the longest release of Zelvatone.
constexpr double kLongestEndSeconds = 4.0;

void checkInstrument(const HostedPlugin& plugin) {
    if (!plugin.isInstrument()) {
        throw InputError(plugin.path() + " is an effect, not an instrument");
    }
    const bool canRender = (plugin.record().flags & effFlagsCanReplacing) != 0 &&
                           plugin.record().processReplacing != nullptr;
    if (!canRender || plugin.outputCount() == 0) {
        throw InputError(plugin.path() + " is an instrument that renders no audio");
    }
}

} // namespace

ProgramMap noPrograms() {
    ProgramMap map;
    map.fill(-1);
    return map;
}

ProgramMap programsByNumber(int count) {
    ProgramMap map = noPrograms();
    for (std::int16_t i = 0; i < static_cast<std::int16_t>(map.size()) && i < count; ++i) {
        map.at(static_cast<std::size_t>(i)) = i;
    }
    return map;
}

Performer::Performer(HostedPlugin& plugin, const Transport& transport, const PerformerPlan& plan)
    : transport_(transport),
      isRaw_(plan.isRaw),
      programs_(plan.programs),
      sampleRate_(plugin.format().sampleRate),
      records_(plan.most) {
    checkInstrument(plugin);
    instances_.push_back({.plugin = &plugin});
    if (plan.spare != nullptr) {
        instances_.push_back({.plugin = plan.spare});
    }
    if (isOurInstrument(plugin)) {
        bendRange_.emplace(kInstrumentBendRange);
    }
    gains_.resize(static_cast<std::size_t>(channels()));
    for (OutputGain& gain : gains_) {
        gain.setSampleRate(sampleRate_);
    }
    const auto block = static_cast<std::size_t>(plugin.format().blockSize);
    const auto inputs = static_cast<std::size_t>(plugin.inputCount());
    const auto outputs = static_cast<std::size_t>(plugin.outputCount());
    samples_.resize((inputs + 2 * outputs) * block);
    float* next = samples_.data();
    const auto addTo = [&](std::vector<float*>& list, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            list.push_back(next);
            next += block;
        }
    };
    addTo(inputs_, inputs);
    inputs_.push_back(nullptr);
    addTo(outputs_, outputs);
    addTo(unheard_, outputs);
    part_.resize(outputs);
    for (const Instance& instance : instances_) {
        instance.plugin->switchOn();
    }
}

Performer::~Performer() {
    for (const Instance& instance : instances_) {
        instance.plugin->switchOff();
    }
}

int Performer::channels() const {
    return std::min(2, instances_[0].plugin->outputCount());
}

const float* Performer::output(int channel) const {
    return outputs_[static_cast<std::size_t>(channel)];
}

void Performer::setParameter(int index, float value) {
    for (const Instance& instance : instances_) {
        instance.plugin->setParameter(index, value);
    }
}

void Performer::beginBlock(int frames) {
    frames_ = frames;
    done_ = 0;
}

void Performer::take(std::int32_t offset, std::span<const std::uint8_t> message) {
    constexpr std::size_t kLongestShort = 3;
    if (isRaw_ || message[0] >= kSystemStatus || message.size() > kLongestShort) {
        hand(offset, message);
        return;
    }
    std::optional<MidiMessage> meant = midiMessage(offset, message);
    if (bendRange_) {
        meant = bendRange_->take(*meant);
    }
    if (meant) {
        controllers_.take(*meant, *this);
    }
}

void Performer::endBlock() {
    renderTo(frames_);
    position_ += frames_;
}

void Performer::play(const MidiMessage& message) {
    follow(message);
    const std::array<std::uint8_t, 3> bytes{message.status, message.data1, message.data2};
    hand(message.frame, std::span(bytes).first(message.length()));
}

void Performer::follow(const MidiMessage& message) {
    auto& notes = active().notes[message.channel()];
    const std::size_t note = message.data1 & 0x7F;
    if (message.kind() == kNoteOnStatus) {
        notes.set(note, message.data2 > 0);
        active().hasPlayed = active().hasPlayed || message.data2 > 0;
    } else if (message.kind() == kNoteOffStatus) {
        notes.reset(note);
    } else if (message.kind() == kBendStatus) {
        lastBend_ = message;
    }
}

// To the part that is rendered next.
void Performer::hand(std::int32_t offset, std::span<const std::uint8_t> message) {
    if (records_.isFullFor(message)) {
        handOver();
    }
    if (!records_.isFullFor(message)) { // there is room for none of its kind
        records_.add(offset - done_, message);
    }
}

// Before their part is rendered.
void Performer::handOver() {
    if (VstEvents* events = records_.list()) {
        active().plugin->request(effProcessEvents, 0, 0, events);
    }
    records_.clear();
}

void Performer::setGain(float gain, std::int32_t frame) {
    renderTo(frame);
    for (OutputGain& output : gains_) {
        output.moveTo(gain);
    }
}

// Note-offs for all that sounds in the active instance.
void Performer::endNotes() {
    for (std::size_t channel = 0; channel < active().notes.size(); ++channel) {
        auto& notes = active().notes[channel];
        for (std::size_t note = 0; note < notes.size(); ++note) {
            if (notes.test(note)) {
                const std::array<std::uint8_t, 3> bytes{
                    static_cast<std::uint8_t>(kNoteOffStatus | channel),
                    static_cast<std::uint8_t>(note), 0};
                hand(done_, bytes);
            }
        }
        notes.reset();
    }
    handOver();
}

void Performer::stopSound(std::int32_t frame) {
    renderTo(frame);
    if (!active().hasPlayed) {
        return;
    }
    endNotes();
    active().hasPlayed = false;
    if (instances_.size() > 1) {
        active().isEnding = true;
        active().silence = 0;
        active_ = (active_ + 1) % instances_.size();
        letEnd(active());
    }
    if (lastBend_) {
        lastBend_->frame = frame;
        play(*lastBend_);
    }
}

// `count`: samples of the instance that have just been rendered, unheard.
void Performer::listen(Instance& instance, std::int32_t count) const {
    const bool isSilent =
        std::all_of(unheard_.begin(), unheard_.end(), [count](const float* output) {
            return std::all_of(output, output + count,
                               [](float sample) { return std::abs(sample) < kSilentLevel; });
        });
    instance.silence = isSilent ? instance.silence + count : 0;
    instance.isEnding = instance.silence < kSilenceSeconds * sampleRate_;
}

// Before it is heard again: what is left of its old sound would be heard too.
void Performer::letEnd(Instance& instance) {
    const VstTimeInfo time = transport_.at(position_ + done_);
    const int block = instance.plugin->format().blockSize;
    const double longest = kLongestEndSeconds * sampleRate_;
    for (std::int64_t done = 0; instance.isEnding && static_cast<double>(done) < longest;
         done += block) {
        instance.plugin->render(time, nullptr, inputs_.data(), unheard_.data(), block);
        listen(instance, block);
    }
    instance.isEnding = false;
}

void Performer::chooseProgram(std::int32_t program, std::int32_t frame) {
    const int chosen = programs_[static_cast<std::size_t>(program & 0x7F)];
    if (chosen < 0) {
        return;
    }
    renderTo(frame);
    for (const Instance& instance : instances_) {
        selectProgram(*instance.plugin, chosen);
    }
}

void Performer::renderTo(std::int32_t frame) {
    const std::int32_t count = std::min(frame, frames_) - done_;
    if (count <= 0) {
        return;
    }
    const VstTimeInfo time = transport_.at(position_ + done_);
    for (std::size_t i = 0; i < instances_.size(); ++i) {
        const bool isActive = i == active_;
        for (std::size_t output = 0; output < part_.size(); ++output) {
            part_[output] = isActive ? outputs_[output] + done_ : unheard_[output];
        }
        instances_[i].plugin->render(time, isActive ? records_.list() : nullptr, inputs_.data(),
                                     part_.data(), count);
        if (instances_[i].isEnding) {
            listen(instances_[i], count);
        }
    }
    records_.clear();
    for (std::size_t channel = 0; channel < gains_.size(); ++channel) {
        gains_[channel].apply(outputs_[channel] + done_, count);
    }
    done_ += count;
}

} // namespace zelvatone
