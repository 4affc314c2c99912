// Files of parameter changes.
#include "host/Error.h"
#include "host/render/Automation.h"
#include "tests/fuzz/Fuzzer.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace zelvatone::test {
namespace {

// A number as a name, two names that are the same in any case, and one of the longest.
const std::vector<std::string> kNames{"Attack", "attack", "7", "Mode Shi", "Reserved", ""};
constexpr double kRate = 192000.0; // the highest
constexpr double kDay = 24.0 * 60.0 * 60.0;

void check(const std::vector<AutomationMove>& moves) {
    double seconds = 0.0;
    for (const AutomationMove& move : moves) {
        require(move.seconds >= seconds && move.seconds <= kDay, "moves are sorted within a day");
        seconds = move.seconds;
        require(move.parameter >= 0 && static_cast<std::size_t>(move.parameter) < kNames.size(),
                "a move is of a parameter that is there");
        require(move.value >= 0.0F && move.value <= 1.0F, "values are from 0 to 1");
    }
    std::int64_t frame = 0;
    for (const ScheduledMove& move : scheduleMoves(moves, kRate)) {
        require(move.frame >= frame, "moves are scheduled in order");
        frame = move.frame;
    }
}

} // namespace
} // namespace zelvatone::test

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace zelvatone::test;
    try {
        check(zelvatone::parseAutomation(textOf(data, size), kNames));
    } catch (const zelvatone::InputError&) {
        return 0; // the usual end of a bad file
    }
    return 0;
}
