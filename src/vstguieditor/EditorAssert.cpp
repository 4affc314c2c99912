#include "vstguieditor/EditorAssert.h"

#include <cstdio>
#include <cstdlib>

namespace zelvatone {

void failEditorAssertion(const char* condition, const char* file, int line) {
    std::fprintf(stderr, "%s:%d: assertion failed: %s\n", file, line, condition);
    std::abort();
}

} // namespace zelvatone
