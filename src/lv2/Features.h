// What an LV2 host offers.
#pragma once

#include <lv2/core/lv2.h>

#include <string_view>

namespace zelvatone::lv2 {

// The data of the feature `uri`, null without it. `features` ends with null.
template<class Data>
Data* featureOf(const LV2_Feature* const* features, std::string_view uri) {
    for (; *features != nullptr; ++features) {
        if ((*features)->URI == uri) {
            return static_cast<Data*>((*features)->data);
        }
    }
    return nullptr;
}

} // namespace zelvatone::lv2
