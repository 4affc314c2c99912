#include "clap/PluginExtensions.h"

#include <algorithm>
#include <string_view>

namespace zelvatone {

namespace {

struct Offer {
    std::string_view id;
    const void* record;
};

constexpr Offer kOffers[] = {
    {clap::kAudioPortsId, &kAudioPortsExtension},
    {clap::kNotePortsId, &kNotePortsExtension},
    {clap::kParamsId, &kParamsExtension},
    {clap::kStateId, &kStateExtension},
    {clap::kLatencyId, &kLatencyExtension},
    {clap::kTailId, &kTailExtension},
    {clap::kGuiId, &kGuiExtension},
    {clap::kTimerSupportId, &kTimerExtension},
};

} // namespace

const void* pluginExtension(const char* id) {
    const auto* const offer = std::ranges::find(kOffers, std::string_view(id), &Offer::id);
    return offer == std::end(kOffers) ? nullptr : offer->record;
}

void copyText(const char* text, char* target, std::size_t size) {
    const std::string_view kept = std::string_view(text).substr(0, size - 1);
    std::copy(kept.begin(), kept.end(), target);
    target[kept.size()] = '\0';
}

} // namespace zelvatone
