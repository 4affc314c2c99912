// What every program plays to be heard and compared.
#pragma once

#include <array>
#include <cstdint>

namespace zelvatone {

struct PhraseNote {
    double start; // seconds
    double end;
    std::uint8_t key; // 60 is middle C
};

// Short notes upwards from a low one, then a chord that lasts long enough for slow sounds to
// unfold. A minor, from the A two octaves below middle C.
inline constexpr std::array<PhraseNote, 10> kPhraseNotes{{{0.0, 0.45, 45},
                                                          {0.5, 0.7, 52},
                                                          {0.75, 0.95, 57},
                                                          {1.0, 1.2, 60},
                                                          {1.25, 1.45, 64},
                                                          {1.5, 1.95, 69},
                                                          {2.0, 4.5, 45},
                                                          {2.0, 4.5, 57},
                                                          {2.0, 4.5, 60},
                                                          {2.0, 4.5, 64}}};
inline constexpr double kPhraseSeconds = 6.0;        // with time for the chord to end
inline constexpr std::uint8_t kPhraseVelocity = 100; // a firm stroke, as keyboards send it

} // namespace zelvatone
