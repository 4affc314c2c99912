#include "params/ProgramName.h"

#include "params/SharedValue.h"

#include <algorithm>
#include <bit>

namespace zelvatone {

ProgramName& ProgramName::operator=(const ProgramName& other) {
    if (this != &other) {
        store(other.characters());
    }
    return *this;
}

ProgramName& ProgramName::operator=(std::string_view name) {
    Characters characters{};
    const std::string_view kept = name.substr(0, std::min(name.find('\0'), kMostCharacters));
    std::copy(kept.begin(), kept.end(), characters.begin());
    store(characters);
    return *this;
}

void ProgramName::store(const Characters& characters) {
    const auto words = std::bit_cast<Words>(characters);
    for (std::size_t i = 0; i < words.size(); ++i) {
        storeShared(words_[i], words[i]);
    }
}

ProgramName::Characters ProgramName::characters() const {
    Words words{};
    for (std::size_t i = 0; i < words.size(); ++i) {
        words[i] = loadShared(words_[i]);
    }
    auto characters = std::bit_cast<Characters>(words);
    // Between two names the parts of both may meet: what follows the first zero belongs to neither.
    std::fill(std::find(characters.begin(), characters.end() - 1, '\0'), characters.end(), '\0');
    return characters;
}

} // namespace zelvatone
