// Usage: zelvatone_program_bench FILE [PROGRAM]
//
// What each factory program costs with 32 notes held for ten seconds, and one note with the program
// that costs most, as a table on standard error and as CSV in FILE; with PROGRAM (0 to 41) that one
// alone. The renderer is AVX2's, or the one that ZELVATONE_KERNEL names. Standard output carries
// the lines of failed look-ups, which are part of the cost. Fails when the renderer makes another
// sound than the reference renderer.
#include "bench/Comparison.h"
#include "bench/ProgramCost.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

namespace {

using zelvatone::Renderer;

constexpr std::int32_t kPrograms = 42;
constexpr std::int32_t kEndlessProgram = 16; // its frequencies run to infinity first

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

// AVX2's, where the environment names no other; the last in the list where there is no AVX2.
Renderer rendererToMeasure() {
    const auto renderers = bench::renderersToCompare();
    const auto found = std::find(renderers.begin(), renderers.end(), Renderer::kAvx2);
    return found == renderers.end() ? renderers.back() : *found;
}

std::string nameOfProgram(std::int32_t program) {
    const zelvatone::ZelvatoneEngine engine(Renderer::kReference);
    return engine.programs[static_cast<std::size_t>(program)].name.text();
}

// Returns whether the sound is the reference renderer's.
bool measure(const bench::HeldChord& chord, Renderer renderer, std::FILE* csv) {
    const bench::ProgramCost cost = bench::measureProgram(chord, renderer);
    const std::string name = nameOfProgram(chord.program);
    std::fprintf(stderr, "%2d %-24s %2d %9.3f %9.1f %8.2f   %016llx%s\n", chord.program,
                 name.c_str(), chord.notes, cost.coreShare * 100.0, cost.worstBlock * 1e6,
                 cost.ratio, static_cast<unsigned long long>(cost.hash),
                 cost.sameSound ? "" : "   ANOTHER SOUND");
    std::fprintf(csv, "%d,%s,%d,%s,%.9f,%.9f,%.3f,%016llx\n", chord.program, name.c_str(),
                 chord.notes, nameOf(renderer), cost.coreShare, cost.worstBlock, cost.ratio,
                 static_cast<unsigned long long>(cost.hash));
    std::fflush(csv);
    return cost.sameSound;
}

} // namespace

int main(int argc, char** argv) {
    const File csv(argc < 2 ? nullptr : std::fopen(argv[1], "w"));
    if (csv == nullptr) {
        std::fprintf(stderr, "zelvatone_program_bench: needs a file that can be written\n");
        return 2;
    }
    const std::int32_t only = argc > 2 ? std::atoi(argv[2]) : -1;
    const Renderer renderer = rendererToMeasure();
    std::fprintf(csv.get(), "program,name,notes,renderer,core,worst_block,ratio,hash\n");
    std::fprintf(stderr, "program                  notes %% of core  worst us    ratio\n");
    bool sameSound = true;
    for (std::int32_t program = 0; program < kPrograms; ++program) {
        if (only < 0 || only == program) {
            sameSound = measure({program, 32, 10, 3}, renderer, csv.get()) && sameSound;
        }
    }
    if (only < 0 || only == kEndlessProgram) {
        sameSound = measure({kEndlessProgram, 1, 10, 10}, renderer, csv.get()) && sameSound;
    }
    return sameSound ? 0 : 1;
}
