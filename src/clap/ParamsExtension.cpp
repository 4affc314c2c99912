// The parameters in units: 22 of the sound, and bypass.
#include "clap/ClapPlugin.h"
#include "clap/PluginExtensions.h"

#include "formats/ParameterUnits.h"

#include <optional>
#include <string>
#include <string_view>

namespace zelvatone {

namespace {

constexpr std::uint32_t kBypassIndex = kShownParameters; // the last one of the host's list

bool isKnown(std::uint32_t id) {
    return id < kShownParameters || id == kBypassId;
}

clap::ParamInfo emptyInfo() {
    return {.id = 0,
            .flags = clap::kParamIsAutomatable,
            .cookie = nullptr,
            .name = {},
            .module = {},
            .min = 0.0,
            .max = 1.0,
            .defaultValue = 0.0};
}

std::uint32_t count(const clap::Plugin* /*plugin*/) noexcept {
    return kShownParameters + 1;
}

bool info(const clap::Plugin* /*plugin*/, std::uint32_t index, clap::ParamInfo* info) noexcept {
    if (index > kBypassIndex) {
        return false;
    }
    *info = emptyInfo();
    if (index == kBypassIndex) {
        info->id = kBypassId;
        info->flags |= clap::kParamIsStepped | clap::kParamIsBypass;
        copyText("Bypass", info->name, sizeof info->name);
        return true;
    }
    const ParameterUnits& parameter = parameterUnits()[index];
    info->id = index;
    info->flags |= parameter.isWhole ? clap::kParamIsStepped : 0U;
    copyText(parameter.name.c_str(), info->name, sizeof info->name);
    info->min = parameter.min;
    info->max = parameter.max;
    info->defaultValue = parameter.defaultValue;
    return true;
}

bool value(const clap::Plugin* plugin, std::uint32_t id, double* value) noexcept {
    if (!isKnown(id)) {
        return false;
    }
    *value = valueOfId(ClapPlugin::of(plugin).instrument(), id);
    return true;
}

std::string textOf(std::uint32_t id, double value) {
    if (id == kBypassId) {
        return value >= 0.5 ? "On" : "Off";
    }
    const ParameterUnits& parameter = parameterUnits()[id];
    return textOfValue(parameter, nearestValue(parameter, value));
}

bool valueToText(const clap::Plugin* /*plugin*/, std::uint32_t id, double value, char* text,
                 std::uint32_t size) noexcept {
    if (!isKnown(id) || size == 0) {
        return false;
    }
    copyText(textOf(id, value).c_str(), text, size);
    return true;
}

std::optional<double> valueOf(std::uint32_t id, std::string_view text) {
    if (id == kBypassId) {
        return text == "On"    ? std::optional(1.0)
               : text == "Off" ? std::optional(0.0)
                               : std::nullopt;
    }
    const std::optional<float> found = valueOfText(parameterUnits()[id], text);
    return found ? std::optional(static_cast<double>(*found)) : std::nullopt;
}

bool textToValue(const clap::Plugin* /*plugin*/, std::uint32_t id, const char* text,
                 double* value) noexcept {
    const std::optional<double> found = isKnown(id) ? valueOf(id, text) : std::nullopt;
    if (found) {
        *value = *found;
    }
    return found.has_value();
}

void flush(const clap::Plugin* plugin, const clap::InputEvents* in,
           const clap::OutputEvents* out) noexcept {
    ClapPlugin::of(plugin).flush(in, out);
}

} // namespace

const clap::PluginParams kParamsExtension{.count = count,
                                          .getInfo = info,
                                          .getValue = value,
                                          .valueToText = valueToText,
                                          .textToValue = textToValue,
                                          .flush = flush};

} // namespace zelvatone
