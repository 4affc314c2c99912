#include "tests/clap/host/ClapLibrary.h"

#include "tests/clap/host/ModuleFile.h"

#include <stdexcept>

namespace zelvatone::test {

ClapLibrary::ClapLibrary(const std::string& path) {
    void* module = openModule(path);
    if (module == nullptr) {
        throw std::runtime_error(path + " cannot be loaded");
    }
    entry_ = static_cast<const clap::Entry*>(symbolOf(module, "clap_entry"));
    if (entry_ == nullptr || !clap::isCompatible(entry_->version) || !entry_->init(path.c_str())) {
        throw std::runtime_error(path + " is not a CLAP of version 1");
    }
}

ClapLibrary::~ClapLibrary() {
    entry_->deinit();
}

const clap::PluginFactory* ClapLibrary::factory() const {
    return static_cast<const clap::PluginFactory*>(entry_->getFactory(clap::kPluginFactoryId));
}

} // namespace zelvatone::test
