// Element access whose broken precondition ends the process.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zelvatone {

// The element at `index` of `list`. An index outside the list is a broken precondition from which
// no caller can recover. The function is noexcept: the range check's exception ends the process at
// this line, with the runtime's message, instead of unwinding into the host.
template<class List>
auto& checkedAt(List& list, std::int32_t index) noexcept {
    // A negative index becomes a huge one, which the range check refuses as well.
    return list.at(static_cast<std::size_t>(index)); // NOLINT(bugprone-exception-escape)
}

} // namespace zelvatone
