// A host's numbers for URIs.
#pragma once

#include <lv2/urid/urid.h>

#include <map>
#include <string>
#include <vector>

namespace zelvatone::test {

// One for the whole process, as in a host. One thread.
class Urids {
public:
    static Urids& get();

    LV2_URID map(const std::string& uri);

    LV2_URID_Map* mapper() { return &mapper_; }
    LV2_URID_Unmap* unmapper() { return &unmapper_; }

private:
    Urids();

    std::map<std::string, LV2_URID> numbers_;
    std::vector<const char*> uris_{""}; // the keys above, by number; 0 is none
    LV2_URID_Map mapper_;
    LV2_URID_Unmap unmapper_;
};

} // namespace zelvatone::test
