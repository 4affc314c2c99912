// Rounding as a rendering has it, on threads that a sound system makes.
#pragma once

#if defined(__SSE__)
#include <xmmintrin.h>
#endif

namespace zelvatone {

// While it lives, tiny numbers are not flushed to zero on this thread, as some sound systems have
// it: the samples would differ from those of a file.
class FloatingPointMode {
public:
#if defined(__SSE__)
    FloatingPointMode() : before_(_mm_getcsr()) {
        _mm_setcsr(kDefault);
    }
    ~FloatingPointMode() {
        _mm_setcsr(before_);
    }
#else
    FloatingPointMode() = default;
    ~FloatingPointMode() = default;
#endif
    FloatingPointMode(const FloatingPointMode&) = delete;
    FloatingPointMode& operator=(const FloatingPointMode&) = delete;

#if defined(__SSE__)
private:
    static constexpr unsigned int kDefault = 0x1F80; // nearest, no traps, no flushing
    unsigned int before_;
#endif
};

} // namespace zelvatone
