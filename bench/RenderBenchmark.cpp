// Usage: zelvatone_render_bench [--load NAME] [--csv FILE] [--curves FILE]
//
// What rendering costs, renderer against renderer, as a table. --load takes one load alone, --csv
// writes the table to FILE too, --curves measures the cost of notes and modes into FILE. Fails when
// a renderer makes another sound than the reference renderer.
#include "bench/Comparison.h"
#include "bench/CostCurves.h"

#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace {

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

struct Options {
    std::string load; // empty: all
    File csv;         // null: none
    File curves;      // null: none
};

// Returns null, with a line on standard error, when the file cannot be written.
File create(const char* path) {
    File file(std::fopen(path, "w"));
    if (file == nullptr) {
        std::perror(path);
    }
    return file;
}

// Takes option `name` with its `value`; returns whether that was possible.
bool take(const char* name, const char* value, Options& options) {
    if (std::strcmp(name, "--load") == 0) {
        options.load = value;
        return true;
    }
    if (std::strcmp(name, "--csv") == 0) {
        options.csv = create(value);
        return options.csv != nullptr;
    }
    if (std::strcmp(name, "--curves") == 0) {
        options.curves = create(value);
        return options.curves != nullptr;
    }
    std::fprintf(stderr, "zelvatone_render_bench: unknown option %s\n", name);
    return false;
}

bool readOptions(int argc, char** argv, Options& options) {
    for (int i = 1; i < argc; i += 2) {
        if (i + 1 == argc) {
            std::fprintf(stderr, "zelvatone_render_bench: %s needs a value\n", argv[i]);
            return false;
        }
        if (!take(argv[i], argv[i + 1], options)) {
            return false;
        }
    }
    return true;
}

// Costs of steady loads read as percent of a core, those of blocks as microseconds.
void print(const bench::Row& row) {
    const double unit = row.kind == "steady" ? 100.0 : 1e6;
    std::printf("%-10s %-9s %10.3f %8.2f   %6.2f .. %6.2f   %016llx%s\n", row.load.c_str(),
                nameOf(row.renderer), row.cost * unit, row.ratio, row.lowerQuartile,
                row.upperQuartile, static_cast<unsigned long long>(row.hash),
                row.sameSound ? "" : "   ANOTHER SOUND");
    std::fflush(stdout);
}

void write(const bench::Row& row, std::FILE* csv) {
    std::fprintf(csv, "%s,%s,%s,%.9f,%.3f,%.3f,%.3f,%016llx\n", row.kind.c_str(), row.load.c_str(),
                 nameOf(row.renderer), row.cost, row.ratio, row.lowerQuartile, row.upperQuartile,
                 static_cast<unsigned long long>(row.hash));
}

// Runs the selected loads; returns whether every renderer made the same sound.
bool compareAll(std::span<const bench::Load> loads,
                std::vector<bench::Row> (*compare)(const bench::Load&), const Options& options) {
    bool sameSound = true;
    for (const bench::Load& load : loads) {
        if (!options.load.empty() && options.load != load.name) {
            continue;
        }
        std::printf("%s\n", load.what);
        for (const bench::Row& row : compare(load)) {
            print(row);
            if (options.csv != nullptr) {
                write(row, options.csv.get());
            }
            sameSound = sameSound && row.sameSound;
        }
    }
    return sameSound;
}

bool compareRenderers(const Options& options) {
    if (options.csv != nullptr) {
        std::fprintf(options.csv.get(),
                     "kind,load,renderer,cost,ratio,lower_quartile,upper_quartile,hash\n");
    }
    std::printf("load       renderer    %% of core    ratio   quartiles        hash of samples\n");
    const bool steady = compareAll(bench::steadyLoads(), bench::compareSteady, options);
    std::printf("\nload       renderer           us    ratio   quartiles        hash of samples\n");
    return compareAll(bench::worstBlockLoads(), bench::compareWorstBlocks, options) && steady;
}

void writeCurves(std::FILE* csv) {
    std::fprintf(csv, "renderer,notes,modes,core_percent\n");
    for (const bench::CostPoint& point : bench::measureCostCurves()) {
        std::fprintf(csv, "%s,%d,%d,%.5f\n", nameOf(point.renderer), point.notes, point.modes,
                     point.coreShare * 100.0);
    }
}

} // namespace

int main(int argc, char** argv) {
    Options options;
    if (!readOptions(argc, argv, options)) {
        return 2;
    }
    const bool sameSound = compareRenderers(options);
    if (options.curves != nullptr) {
        writeCurves(options.curves.get());
    }
    return sameSound ? 0 : 1;
}
