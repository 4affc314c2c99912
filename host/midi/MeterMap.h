// Time signatures of a song, and where its bars start.
#pragma once

#include <vector>

namespace zelvatone {

class MeterMap {
public:
    struct Change {
        double quarters; // from the start; a bar starts here
        int numerator;   // at least 1
        int denominator; // a power of two
    };
    struct Bar {
        double startQuarters;
        int numerator;
        int denominator;
    };

    // `changes` in order; four quarters a bar hold until the first. Of several changes on one
    // position the last one holds.
    explicit MeterMap(std::vector<Change> changes);

    // The bar that a position from 0 on lies in.
    Bar barAt(double quarters) const;
    // How often the meter becomes another one after the start.
    int changeCount() const;

private:
    std::vector<Change> changes_;
};

} // namespace zelvatone
