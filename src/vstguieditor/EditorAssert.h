// Preconditions that hold in every build. The toolkit's header switches the standard `assert` off,
// so the editor has its own.
#pragma once

namespace zelvatone {

// Writes what was expected, and where, to standard error and ends the process.
[[noreturn]] void failEditorAssertion(const char* condition, const char* file, int line);

} // namespace zelvatone

// Ends the process unless `condition` holds. A macro, for the text of the condition. The file's
// name has no folder: a compiler cache may shorten that, and the same sources would give other
// bytes.
#define ZELVATONE_EDITOR_ASSERT(condition)                                                         \
    ((condition) ? static_cast<void>(0)                                                            \
                 : ::zelvatone::failEditorAssertion(#condition, __FILE_NAME__, __LINE__))
