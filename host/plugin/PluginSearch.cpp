#include "host/plugin/PluginSearch.h"

#include "host/Error.h"
#include "host/text/Format.h"

#include <string>
#include <system_error>

namespace zelvatone {

std::filesystem::path findPlugin(const std::vector<std::filesystem::path>& folders) {
    std::string searched;
    for (const auto& folder : folders) {
        std::error_code error; // a folder that cannot be looked into holds nothing for us
        if (std::filesystem::is_regular_file(folder / pluginFile(), error)) {
            return folder / pluginFile();
        }
        searched += (searched.empty() ? "" : ", ") + folder.string();
    }
    throw InputError(
        formatText("{} not found in {}; name it with --plugin", pluginFile(), searched));
}

} // namespace zelvatone
