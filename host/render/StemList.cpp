#include "host/render/StemList.h"

#include "host/Error.h"
#include "host/files/FileBytes.h"
#include "host/files/OutputFile.h"
#include "host/files/UserPath.h"
#include "host/text/Format.h"
#include "host/text/Json.h"

#include <algorithm>
#include <system_error>

namespace zelvatone {

namespace {

namespace fs = std::filesystem;

constexpr const char* kListName = ".stems.json";
constexpr std::size_t kLargestList = 65536; // a part has some 50 bytes, and there are 17 parts

// A name from a file must not lead to another folder.
bool isPlainName(const std::string& name) {
    return !name.empty() && name.find_first_of("/\\") == std::string::npos &&
           !name.starts_with('.') && userPath(name).filename() == userPath(name);
}

} // namespace

std::vector<StemEntry> readStemList(const fs::path& folder) {
    std::vector<StemEntry> entries;
    try {
        const auto bytes = readBytes(folder / kListName, kLargestList, "list of stems");
        const Json list = Json::parse(bytes.begin(), bytes.end());
        for (const Json& entry : list) {
            const auto name = entry.at("name").get<std::string>();
            if (isPlainName(name)) {
                entries.push_back({name, entry.at("bytes").get<std::int64_t>()});
            }
        }
    } catch (const InputError&) {
        return {};
    } catch (const Json::exception&) {
        return {};
    }
    return entries;
}

void writeStemList(const fs::path& folder, const std::vector<std::string>& names) {
    Json list = Json::array();
    for (const std::string& name : names) {
        list.push_back({{"name", name}, {"bytes", fs::file_size(folder / userPath(name))}});
    }
    const std::string text = jsonText(list);
    OutputFile file(folder / kListName);
    file.write(text.data(), static_cast<std::int64_t>(text.size()));
    file.commit();
}

void removeOldStems(const fs::path& folder, const std::vector<StemEntry>& before,
                    const std::vector<std::string>& names) {
    for (const StemEntry& entry : before) {
        if (std::find(names.begin(), names.end(), entry.name) != names.end()) {
            continue;
        }
        std::error_code error; // what cannot be looked at or removed stays
        const fs::path file = folder / userPath(entry.name);
        if (fs::is_regular_file(fs::symlink_status(file, error)) &&
            fs::file_size(file, error) == static_cast<std::uintmax_t>(entry.bytes)) {
            fs::remove(file, error);
        }
    }
}

} // namespace zelvatone
