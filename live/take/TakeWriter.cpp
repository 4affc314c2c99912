#include "live/take/TakeWriter.h"

#include "host/Error.h"
#include "host/files/OutputFile.h"
#include "host/text/Format.h"
#include "live/take/TakeFiles.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <utility>

namespace zelvatone {

namespace {

// Often enough that rings of seconds never fill; waking the thread would be a system call on the
// audio thread.
constexpr std::chrono::milliseconds kTurn{20};
constexpr std::size_t kSamplesAtOnce = 16384;
constexpr std::size_t kEventsAtOnce = 1024;

std::span<const std::uint8_t> bytesOf(const std::string& text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
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
      samples_(kSamplesAtOnce - kSamplesAtOnce % static_cast<std::size_t>(plan.channels)),
      thread_([this](const std::stop_token& stop) { run(stop); }) {}

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
    if (count > 0 && !hasFailed_) {
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
        } catch (const Error& error) {
            failure_ = error.what();
            hasFailed_ = true;
        }
        if (isLast) {
            return;
        }
        std::this_thread::sleep_for(kTurn);
    }
}

void TakeWriter::writeFile(const char* extension, std::span<const std::uint8_t> bytes) const {
    std::filesystem::path path = plan_.sound;
    OutputFile file(path.replace_extension(extension));
    file.write(bytes.data(), static_cast<std::int64_t>(bytes.size()));
    file.commit();
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
    writeFile(".mid", takeMidi(events_, frames_, clock_));
    const std::string moves =
        takeAutomation(events_, plan_.parameterNames, plan_.rate, plan_.command);
    writeFile(".csv", bytesOf(moves));
    if (!plan_.programs.empty()) {
        writeFile(".programs.csv", bytesOf(plan_.programs));
    }
    sound_.commit();
}

std::string TakeWriter::warning() const {
    return rings_.isFull() ? formatText("{}: the disk was too slow; the recording ends after "
                                        "{:.1f} s",
                                        plan_.sound.string(), seconds())
                           : std::string();
}

double TakeWriter::seconds() const {
    return static_cast<double>(frames_) / plan_.rate;
}

} // namespace zelvatone
