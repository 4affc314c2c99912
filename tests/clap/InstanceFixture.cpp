#include "tests/clap/InstanceFixture.h"

namespace zelvatone::test {

const ClapLibrary& clapLibrary() {
    static const ClapLibrary kLibrary(ZELVATONE_CLAP);
    return kLibrary;
}

} // namespace zelvatone::test
