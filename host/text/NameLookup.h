// Finds what a user means among the names of a plug-in.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zelvatone {

// What the names are.
struct NameKind {
    std::string_view word;     // "program"
    std::string_view command;  // that lists them: "zelvatone programs"
    std::size_t cutLength = 0; // bytes that plug-ins may cut the names to; 0: they do not
};

class NameLookup {
public:
    // `names` by number, from 0. They must outlive the lookup.
    NameLookup(const NameKind& kind, const std::vector<std::string>& names)
        : kind_(kind), names_(names) {}

    // The number of the name that `wanted` means. Tried in this order: the name itself, the name in
    // any case, the name as a plug-in cuts it, a number, the beginning of just one name in any
    // case. Throws InputError, with the candidates or the nearest names, for what means several or
    // none.
    int find(std::string_view wanted) const;

private:
    template<typename Fits>
    int only(std::string_view wanted, Fits fits) const;
    int numberIn(std::string_view wanted) const;
    std::string severalError(std::string_view wanted, const std::vector<int>& found) const;
    std::string noneError(std::string_view wanted) const;

    NameKind kind_;
    const std::vector<std::string>& names_;
};

} // namespace zelvatone
