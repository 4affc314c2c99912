#include "tests/lv2/Urids.h"

namespace zelvatone::test {

Urids& Urids::get() {
    static Urids urids;
    return urids;
}

Urids::Urids()
    : mapper_{this, [](LV2_URID_Map_Handle self,
                       const char* uri) { return static_cast<Urids*>(self)->map(uri); }},
      unmapper_{this, [](LV2_URID_Unmap_Handle self, LV2_URID urid) {
                    return static_cast<Urids*>(self)->uris_.at(urid);
                }} {}

LV2_URID Urids::map(const std::string& uri) {
    const auto [entry, isNew] = numbers_.try_emplace(uri, static_cast<LV2_URID>(uris_.size()));
    if (isNew) {
        uris_.push_back(entry->first.c_str());
    }
    return entry->second;
}

} // namespace zelvatone::test
