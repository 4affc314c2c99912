#include "host/plugin/PluginLibrary.h"

#include "host/Error.h"
#include "host/plugin/SharedLibrary.h"
#include "host/text/Format.h"

namespace zelvatone {

PluginLibrary::PluginLibrary(const std::filesystem::path& path)
    : path_(std::filesystem::absolute(path)) {
    if (!std::filesystem::exists(path_)) {
        throw InputError(path.string() + ": no such plug-in");
    }
    const SharedLibrary library = loadLibrary(path_);
    if (library.handle == nullptr) {
        throw InputError(formatText("{} is not a plug-in: {}", path.string(), library.error));
    }
    void* entry = findFunction(library, "VSTPluginMain");
    if (entry == nullptr) {
        entry = findFunction(library, "main"); // what the interface called it before version 2.4
    }
    if (entry == nullptr) {
        throw InputError(path.string() + " is not a plug-in: it has no entry point VSTPluginMain");
    }
    entryPoint_ = reinterpret_cast<EntryPoint>(entry);
}

} // namespace zelvatone
