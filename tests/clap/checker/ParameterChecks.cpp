#include "tests/clap/checker/Check.h"

#include <array>
#include <cmath>
#include <cstring>
#include <optional>
#include <set>
#include <string_view>

namespace zelvatone::test {

namespace {

struct Texts {
    const clap::PluginParams& params;
    const clap::Plugin* plugin;

    std::optional<std::string> textOf(std::uint32_t id, double value) const {
        std::array<char, 256> text{};
        return params.valueToText(plugin, id, value, text.data(), text.size())
                   ? std::optional<std::string>(text.data())
                   : std::nullopt;
    }
    std::optional<double> valueOf(std::uint32_t id, const char* text) const {
        double value = NAN;
        return params.textToValue(plugin, id, text, &value) ? std::optional(value) : std::nullopt;
    }
};

Texts textsOf(const ClapInstance& instance) {
    return {.params = extensionOf<clap::PluginParams>(instance, clap::kParamsId),
            .plugin = &instance.plugin()};
}

void infos(CheckContext& context) {
    const ClapInstance instance = context.make();
    const std::vector<double> values = valuesOf(instance);
    std::set<std::uint32_t> ids;
    int bypasses = 0;
    std::size_t index = 0;
    for (const clap::ParamInfo& parameter : parametersOf(instance)) {
        const std::string name = parameter.name;
        require(!name.empty(), "a parameter has no name");
        require(ids.insert(parameter.id).second, name + " has the id of another");
        require(parameter.min <= parameter.max, name + " has a range that is turned round");
        require(parameter.defaultValue >= parameter.min && parameter.defaultValue <= parameter.max,
                name + " has a default outside its range");
        require(values[index++] == parameter.defaultValue, name + " does not begin at its default");
        if ((parameter.flags & clap::kParamIsStepped) != 0) {
            require(parameter.min == std::trunc(parameter.min) &&
                        parameter.max == std::trunc(parameter.max),
                    name + " is stepped and has no whole range");
        }
        if ((parameter.flags & clap::kParamIsBypass) != 0) {
            ++bypasses;
            require((parameter.flags & clap::kParamIsStepped) != 0 && parameter.min == 0.0 &&
                        parameter.max == 1.0,
                    name + " is a bypass and not a step from 0 to 1");
        }
    }
    require(bypasses <= 1, "there is more than one bypass");
}

void unknownIds(CheckContext& context) {
    const ClapInstance instance = context.make();
    const Texts texts = textsOf(instance);
    std::set<std::uint32_t> known;
    for (const clap::ParamInfo& parameter : parametersOf(instance)) {
        known.insert(parameter.id);
    }
    for (const std::uint32_t id : {UINT32_MAX, UINT32_MAX - 1, 4711U}) {
        double value = 0.0;
        require(known.contains(id) || (!texts.params.getValue(texts.plugin, id, &value) &&
                                       !texts.textOf(id, 0.0) && !texts.valueOf(id, "0")),
                "a parameter that does not exist has a value or a text");
    }
    clap::ParamInfo info{};
    require(!texts.params.getInfo(texts.plugin, texts.params.count(texts.plugin), &info),
            "there is a parameter after the last one");
}

void conversions(CheckContext& context) {
    const ClapInstance instance = context.make();
    const Texts texts = textsOf(instance);
    for (const clap::ParamInfo& parameter : parametersOf(instance)) {
        for (int i = 0; i < 50; ++i) {
            const double value = randomValue(parameter, context.random);
            const auto text = texts.textOf(parameter.id, value);
            require(text.has_value(), std::string(parameter.name) + " has no text");
            const auto read = texts.valueOf(parameter.id, text->c_str());
            require(read.has_value(), std::string(parameter.name) + " cannot read " + *text);
            require(texts.textOf(parameter.id, *read) == text,
                    std::string(parameter.name) + " reads " + *text + " as another value");
        }
    }
}

void steps(CheckContext& context) {
    const ClapInstance instance = context.make();
    const Texts texts = textsOf(instance);
    for (const clap::ParamInfo& parameter : parametersOf(instance)) {
        const bool isStepped = (parameter.flags & clap::kParamIsStepped) != 0;
        for (double value = parameter.min; isStepped && value <= parameter.max; ++value) {
            const auto text = texts.textOf(parameter.id, value);
            require(text && texts.valueOf(parameter.id, text->c_str()) == value,
                    std::string(parameter.name) + " loses a step in its text");
        }
    }
}

void shortTexts(CheckContext& context) {
    const ClapInstance instance = context.make();
    const Texts texts = textsOf(instance);
    for (const clap::ParamInfo& parameter : parametersOf(instance)) {
        std::array<char, 8> text{};
        text.fill('#');
        texts.params.valueToText(texts.plugin, parameter.id, parameter.max, text.data(), 4);
        require(text[4] == '#', std::string(parameter.name) + " writes beyond its text's end");
        require(text[0] == '#' || std::memchr(text.data(), '\0', 4) != nullptr,
                std::string(parameter.name) + " leaves its text without an end");
    }
}

void garbageTexts(CheckContext& context) {
    const ClapInstance instance = context.make();
    const Texts texts = textsOf(instance);
    for (const clap::ParamInfo& parameter : parametersOf(instance)) {
        for (const char* text : {"", "?", "\xFF\xFE", "1e999999", "nan",
                                 "a text that is much longer than any value's text would be"}) {
            const auto value = texts.valueOf(parameter.id, text);
            require(!value || (*value >= parameter.min && *value <= parameter.max),
                    std::string(parameter.name) + " reads a value outside its range");
        }
    }
}

// Whether each value is what was asked for, as near as a float tells.
void requireValues(const ClapInstance& instance, const std::vector<double>& wanted) {
    const std::vector<double> values = valuesOf(instance);
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        require(std::fabs(values[i] - wanted[i]) <= 1e-6 * std::fmax(1.0, std::fabs(wanted[i])),
                "a value that was set is another one");
    }
}

void setByEvents(CheckContext& context) {
    ClapInstance instance = context.make();
    const std::vector<clap::ParamInfo> parameters = parametersOf(instance);
    const auto& params = extensionOf<clap::PluginParams>(instance, clap::kParamsId);
    OutputList sent;
    const auto setAll = [&](const auto& give) {
        InputList events;
        std::vector<double> wanted;
        for (const clap::ParamInfo& parameter : parameters) {
            wanted.push_back(randomValue(parameter, context.random));
            events.add(paramValue(0, parameter.id, wanted.back(), parameter.cookie));
        }
        give(events);
        requireValues(instance, wanted);
    };
    const auto flush = [&](const InputList& events) {
        params.flush(&instance.plugin(), &events.record(), &sent.record());
    };
    setAll(flush); // inactive: the main thread
    instance.activate(48000.0, 128);
    setAll([&](const InputList& events) { instance.play(128, events, sent); });
    setAll([&](const InputList& events) { ClapInstance::onAudioThread([&] { flush(events); }); });
    requireNoFaults(instance);
}

void foreignSpace(CheckContext& context) {
    ClapInstance instance = context.make();
    const std::vector<double> before = valuesOf(instance);
    InputList events;
    for (const clap::ParamInfo& parameter : parametersOf(instance)) {
        clap::ParamValueEvent event = paramValue(0, parameter.id, parameter.max, parameter.cookie);
        event.header.space = 0xB33F;
        events.add(event);
    }
    OutputList sent;
    instance.activate(48000.0, 64);
    instance.play(64, events, sent);
    require(valuesOf(instance) == before, "events of another space have set values");
}

constexpr Check kChecks[] = {
    {"param-infos", "Parameters have names, ids, ranges and defaults that fit.", infos},
    {"param-unknown-ids", "A parameter that does not exist has no value.", unknownIds},
    {"param-conversions", "A text reads back as the same text.", conversions},
    {"param-steps", "Every step reads back as itself.", steps},
    {"param-short-texts", "A short text is not overrun.", shortTexts},
    {"param-garbage-texts", "Garbage reads as no value, or as one in the range.", garbageTexts},
    {"param-set", "Events set values, in blocks and in flushes on both threads.", setByEvents},
    {"param-wrong-space", "Events of other spaces set nothing.", foreignSpace},
};

} // namespace

std::span<const Check> parameterChecks() {
    return kChecks;
}

} // namespace zelvatone::test
