// Whether files fit on their disks, before anybody works for them.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <vector>

namespace zelvatone {

struct DiskDemand {
    std::filesystem::path file; // that is to be written
    std::int64_t bytes;
};

using SpaceOf = std::function<std::filesystem::space_info(const std::filesystem::path& folder)>;

// Throws InputError when the files of one disk need more than is free there. A disk that does not
// say how much that is counts as large enough. `spaceOf` tells of a folder's disk.
void checkDiskSpace(const std::vector<DiskDemand>& demands, const SpaceOf& spaceOf);
// The same of the system's disks.
void checkDiskSpace(const std::vector<DiskDemand>& demands);

} // namespace zelvatone
