// The checks of the CLAP checker: each a name, a sentence that must be true, and a function.
#pragma once

#include "tests/clap/host/ClapInstance.h"

#include <cstdint>
#include <random>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

namespace zelvatone::test {

// What is wrong with the plug-in, as a sentence.
class CheckFailure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Why a check has nothing to look at.
class CheckSkipped : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct CheckContext {
    const ClapLibrary& library;
    std::string id;
    std::mt19937 random;

    ClapInstance make() const { return {library, id.c_str()}; }
};

struct Check {
    const char* name;
    const char* sentence;
    void (*run)(CheckContext& context);
};

// Of the library and its descriptors, of parameters, of states, of blocks.
std::span<const Check> libraryChecks();
std::span<const Check> parameterChecks();
std::span<const Check> stateChecks();
std::span<const Check> processChecks();

// Throws CheckFailure with `sentence` unless `holds`.
void require(bool holds, const std::string& sentence);
// Throws CheckFailure with the first thing that the plug-in did against the rules of the host.
void requireNoFaults(const ClapInstance& instance);

// The extension of the plug-in; throws CheckSkipped without it.
template<class Extension>
const Extension& extensionOf(const ClapInstance& instance, const char* id) {
    const auto* extension = instance.extension<Extension>(id);
    if (extension == nullptr) {
        throw CheckSkipped(std::string("the plug-in has no ") + id);
    }
    return *extension;
}

// All parameters, in the plug-in's order.
std::vector<clap::ParamInfo> parametersOf(const ClapInstance& instance);
// The value of each of them.
std::vector<double> valuesOf(const ClapInstance& instance);
// A value of the parameter, whole where it is stepped.
double randomValue(const clap::ParamInfo& parameter, std::mt19937& random);
// Events at the first sample that set each parameter to such a value.
void addRandomValues(const ClapInstance& instance, std::mt19937& random, InputList& events,
                     bool withCookies = true);

} // namespace zelvatone::test
