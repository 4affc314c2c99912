#include "live/take/TakeWriter.h"

#include "host/Error.h"
#include "host/text/Format.h"
#include "live/take/TakeFiles.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <exception>
#include <system_error>
#include <utility>

namespace zelvatone {

namespace {

// Often enough that rings of seconds never fill; waking the thread would be a system call on the
// audio thread.
constexpr std::chrono::milliseconds kTurn{20};
constexpr std::size_t kSamplesAtOnce = 16384;
constexpr std::size_t kEventsAtOnce = 1024;

// A WAV file counts its bytes in 32 bits; what the rings hold still fits behind this.
constexpr std::int64_t kMostBytes = 4'200'000'000;
// Of files: an event takes less as a MIDI message and less as a line of moves.
constexpr std::uintmax_t kBytesAnEvent = 64;

void writeAll(OutputFile& file, std::span<const std::uint8_t> bytes) {
    file.write(bytes.data(), static_cast<std::int64_t>(bytes.size()));
    file.settle();
}

void writeAll(OutputFile& file, const std::string& text) {
    writeAll(file, {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
}

} // namespace

TakeWriter::TakeWriter(const Plan& plan, TakeRings& rings, const TakeClock& clock)
    : plan_(plan),
      rings_(rings),
      clock_(clock),
      sound_(plan.sound, {.container = Container::kWav,
                          .samples = SampleKind::kFloat,
                          .sampleRate = plan.rate,
                          .channels = plan.channels}),
      messages_(beside(".mid")),
      moves_(beside(".csv")),
      samples_(kSamplesAtOnce - kSamplesAtOnce % static_cast<std::size_t>(plan.channels)) {
    if (!plan.programs.empty()) {
        programs_.emplace(beside(".programs.csv"));
    }
    thread_ = std::jthread([this](const std::stop_token& stop) { run(stop); });
}

TakeWriter::~TakeWriter() = default;

// The sound goes first: an event whose sample is in the file has been in its ring before.
bool TakeWriter::drain() {
    const std::size_t count = rings_.read(std::span(samples_));
    std::array<TakeEvent, kEventsAtOnce> events{};
    std::size_t eventCount = 0;
    do {
        eventCount = rings_.read(std::span(events));
        events_.insert(events_.end(), events.begin(),
                       events.begin() + static_cast<std::ptrdiff_t>(eventCount));
    } while (eventCount == events.size());
    if (count > 0 && !hasFailed_ && !hasEnded_) {
        sound_.write(std::span(samples_).first(count));
        frames_ += static_cast<std::int64_t>(count) / plan_.channels;
    }
    return count == samples_.size();
}

void TakeWriter::run(const std::stop_token& stop) {
    while (true) {
        const bool isLast = stop.stop_requested();
        try {
            while (drain()) {
            }
            endWhereNoMoreFits();
        } catch (const std::exception& error) { // of memory too
            failure_ = error.what();
            hasFailed_ = true;
        }
        if (isLast) {
            return;
        }
        std::this_thread::sleep_for(kTurn);
    }
}

// The rings are empty then: a recording ends with a whole block, as a rendering of it does.
void TakeWriter::endWhereNoMoreFits() {
    if (hasEnded_ || hasFailed_) {
        return;
    }
    std::error_code error; // of a system that does not tell: writing will
    const auto space = std::filesystem::space(
        plan_.sound.parent_path().empty() ? std::filesystem::path(".") : plan_.sound.parent_path(),
        error);
    const auto bytes = frames_ * plan_.channels * static_cast<std::int64_t>(sizeof(float));
    if (bytes > kMostBytes) {
        ending_ = "a WAV file holds no more";
    } else if (!error && space.available < plan_.reservedBytes + kBytesAnEvent * events_.size()) {
        ending_ = "the disk is almost full";
    }
    hasEnded_ = !ending_.empty();
}

std::filesystem::path TakeWriter::beside(const char* extension) const {
    return std::filesystem::path(plan_.sound).replace_extension(extension);
}

void TakeWriter::finish() {
    thread_.request_stop();
    thread_.join();
    if (hasFailed_) {
        throw InputError(failure_);
    }
    sound_.complete();
    // Of what ended early, the sound ends at a block, and events of the next may have come.
    std::erase_if(events_, [this](const TakeEvent& event) { return event.frame >= frames_; });
    writeAll(messages_, takeMidi(events_, frames_, clock_));
    writeAll(moves_, takeAutomation(events_, plan_.parameterNames, plan_.rate, plan_.command));
    if (programs_) {
        writeAll(*programs_, plan_.programs);
    }
    messages_.commit();
    moves_.commit();
    if (programs_) {
        programs_->commit();
    }
    sound_.commit();
}

std::string TakeWriter::warning() const {
    const std::string reason = rings_.isFull() ? "the disk was too slow" : ending_;
    return reason.empty() ? reason
                          : formatText("{}: {}; the recording ends after {:.1f} s",
                                       plan_.sound.string(), reason, seconds());
}

double TakeWriter::seconds() const {
    return static_cast<double>(frames_) / plan_.rate;
}

} // namespace zelvatone
