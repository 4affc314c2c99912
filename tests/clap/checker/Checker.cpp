// clap_checker FILE [SEED]: checks every plug-in in a CLAP file, one line a check. Returns 0 if all
// hold, 1 if one does not, 2 for a file that is not a CLAP.
#include "tests/clap/checker/Check.h"

#include <cstdio>
#include <cstdlib>
#include <exception>

namespace {

using namespace zelvatone::test;

struct Totals {
    int held = 0;
    int failed = 0;
    int skipped = 0;
};

void runCheck(const Check& check, const ClapLibrary& library, const char* id, unsigned seed,
              Totals& totals) {
    CheckContext context{.library = library, .id = id, .random = std::mt19937(seed)};
    try {
        check.run(context);
        ++totals.held;
        std::printf("ok    %-28s %s\n", check.name, check.sentence);
    } catch (const CheckSkipped& why) {
        ++totals.skipped;
        std::printf("skip  %-28s %s\n", check.name, why.what());
    } catch (const std::exception& why) {
        ++totals.failed;
        std::printf("FAIL  %-28s %s (seed %u)\n", check.name, why.what(), seed);
    }
}

int checkFile(const char* path, unsigned seed) {
    const ClapLibrary library(path);
    const zelvatone::clap::PluginFactory* factory = library.factory();
    if (factory == nullptr) {
        throw std::runtime_error(std::string(path) + " makes no plug-ins");
    }
    Totals totals;
    for (std::uint32_t i = 0; i < factory->getPluginCount(factory); ++i) {
        const char* id = factory->getPluginDescriptor(factory, i)->id;
        std::printf("%s\n", id);
        for (const auto& checks :
             {libraryChecks(), parameterChecks(), stateChecks(), processChecks()}) {
            for (const Check& check : checks) {
                runCheck(check, library, id, seed, totals);
            }
        }
    }
    std::printf("%d hold, %d fail, %d skipped\n", totals.held, totals.failed, totals.skipped);
    return totals.failed == 0 ? 0 : 1;
}

} // namespace

int main(int count, char** arguments) {
    if (count < 2 || count > 3) {
        std::fprintf(stderr, "usage: clap_checker FILE [SEED]\n");
        return 2;
    }
    try {
        const unsigned long seed = count == 3 ? std::strtoul(arguments[2], nullptr, 10) : 1;
        return checkFile(arguments[1], static_cast<unsigned>(seed));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 2;
    }
}
