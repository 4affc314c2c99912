#include "host/files/DiskSpace.h"

#include "host/Error.h"
#include "host/text/Format.h"

#include <map>
#include <system_error>
#include <tuple>

namespace zelvatone {

namespace {

namespace fs = std::filesystem;

constexpr double kMegabyte = 1e6;

// Two folders whose disks are of one size with as much free are taken to be on one disk.
using Disk = std::tuple<std::uintmax_t, std::uintmax_t>;

Disk diskOf(const fs::path& file, const SpaceOf& spaceOf) {
    const fs::space_info space = spaceOf(file.has_parent_path() ? file.parent_path() : ".");
    return {space.capacity, space.available};
}

} // namespace

void checkDiskSpace(const std::vector<DiskDemand>& demands, const SpaceOf& spaceOf) {
    std::map<Disk, std::int64_t> needed;
    for (const DiskDemand& demand : demands) {
        const Disk disk = diskOf(demand.file, spaceOf);
        const std::uintmax_t available = std::get<1>(disk);
        needed[disk] += demand.bytes;
        if (static_cast<std::uintmax_t>(needed[disk]) > available) {
            throw InputError(formatText("cannot write {}: {:.0f} MB are needed, {:.0f} MB are free",
                                        demand.file.string(),
                                        static_cast<double>(needed[disk]) / kMegabyte,
                                        static_cast<double>(available) / kMegabyte));
        }
    }
}

void checkDiskSpace(const std::vector<DiskDemand>& demands) {
    checkDiskSpace(demands, [](const fs::path& folder) {
        std::error_code error; // all numbers are as large as can be then
        return fs::space(folder, error);
    });
}

} // namespace zelvatone
