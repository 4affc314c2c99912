#include "params/SynthProgram.h"

#include "params/CheckedAccess.h"

#include <utility>

namespace zelvatone {

namespace {

std::vector<SynthParameter*> clonesOf(const std::vector<SynthParameter*>& parameters) {
    std::vector<SynthParameter*> clones;
    clones.reserve(parameters.size());
    for (const SynthParameter* parameter : parameters) {
        clones.push_back(parameter->clone());
    }
    return clones;
}

void destroyAll(const std::vector<SynthParameter*>& parameters) {
    for (SynthParameter* parameter : parameters) {
        SynthParameter::destroy(parameter);
    }
}

} // namespace

SynthProgram::SynthProgram(std::size_t count) : name("Unnamed Program") {
    parameters.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        parameters.push_back(new SynthParameter);
    }
}

SynthProgram::SynthProgram(const SynthProgram& other)
    : parameters(clonesOf(other.parameters)), name(other.name) {}

SynthProgram& SynthProgram::operator=(const SynthProgram& other) {
    if (this != &other) {
        name = other.name;
        const auto old = std::exchange(parameters, clonesOf(other.parameters));
        destroyAll(old);
    }
    return *this;
}

SynthProgram::~SynthProgram() {
    destroyAll(parameters);
}

void SynthProgram::replaceParameter(std::int32_t index, SynthParameter* parameter) {
    SynthParameter::destroy(std::exchange(checkedAt(parameters, index), parameter));
}

} // namespace zelvatone
