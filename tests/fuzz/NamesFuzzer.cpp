// The look-up of programs and parameters by what a user typed. The first line of an input is what
// was typed; each other line is a name.
#include "host/Error.h"
#include "host/plugin/ParameterLookup.h"
#include "host/plugin/Programs.h"
#include "tests/fuzz/Fuzzer.h"
#include "tests/fuzz/Lines.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

namespace zelvatone::test {
namespace {

using Names = std::vector<std::string>;
using Find = int (*)(const Names& names, std::string_view wanted);

void checkFind(Find find, const Names& names, const std::string& wanted) {
    try {
        const int number = find(names, wanted);
        require(number >= 0 && static_cast<std::size_t>(number) < names.size(),
                "what is found is there");
    } catch (const InputError& error) {
        require(*error.what() != '\0', "an error says why");
    }
}

// The name itself comes before everything else that a text may mean.
void checkNameIsFound(Find find, const Names& names, const std::string& wanted) {
    if (std::count(names.begin(), names.end(), wanted) == 1) {
        const auto number = static_cast<std::size_t>(find(names, wanted));
        require(names.at(number) == wanted, "a name that is there once is found");
    }
}

void check(const Names& names, const std::string& wanted) {
    for (const Find find : {&findProgram, &findParameter}) {
        checkFind(find, names, wanted);
        checkNameIsFound(find, names, wanted);
    }
}

} // namespace
} // namespace zelvatone::test

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace zelvatone::test;
    Names names = linesOf(textOf(data, size));
    const std::string wanted = names.front();
    names.erase(names.begin());
    check(names, wanted);
    return 0;
}
