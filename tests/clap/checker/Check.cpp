#include "tests/clap/checker/Check.h"

#include <cmath>

namespace zelvatone::test {

void require(bool holds, const std::string& sentence) {
    if (!holds) {
        throw CheckFailure(sentence);
    }
}

void requireNoFaults(const ClapInstance& instance) {
    require(instance.faults.empty(), instance.faults.empty() ? "" : instance.faults.front());
}

std::vector<clap::ParamInfo> parametersOf(const ClapInstance& instance) {
    const auto& params = extensionOf<clap::PluginParams>(instance, clap::kParamsId);
    const clap::Plugin* plugin = &instance.plugin();
    std::vector<clap::ParamInfo> all(params.count(plugin));
    for (std::uint32_t i = 0; i < all.size(); ++i) {
        require(params.getInfo(plugin, i, &all[i]),
                "parameter " + std::to_string(i) + " has no info");
    }
    return all;
}

std::vector<double> valuesOf(const ClapInstance& instance) {
    const auto& params = extensionOf<clap::PluginParams>(instance, clap::kParamsId);
    std::vector<double> values;
    for (const clap::ParamInfo& parameter : parametersOf(instance)) {
        double value = 0.0;
        require(params.getValue(&instance.plugin(), parameter.id, &value),
                std::string(parameter.name) + " has no value");
        values.push_back(value);
    }
    return values;
}

double randomValue(const clap::ParamInfo& parameter, std::mt19937& random) {
    const double value =
        std::uniform_real_distribution<double>(parameter.min, parameter.max)(random);
    return (parameter.flags & clap::kParamIsStepped) != 0 ? std::round(value) : value;
}

void addRandomValues(const ClapInstance& instance, std::mt19937& random, InputList& events,
                     bool withCookies) {
    for (const clap::ParamInfo& parameter : parametersOf(instance)) {
        events.add(paramValue(0, parameter.id, randomValue(parameter, random),
                              withCookies ? parameter.cookie : nullptr));
    }
}

} // namespace zelvatone::test
