#include "vstgui/lib/vstguiinit.h"

#include "vstgui/lib/cfont.h"
#include "vstgui/lib/platform/platformfactory.h"

#include <cassert>
#include <memory>

namespace VSTGUI {
namespace {

std::unique_ptr<IPlatformFactory> factory;

} // namespace

void init(PlatformInstanceHandle instance) {
    assert(!factory);
    factory = createPlatformFactory(instance);
    kNormalFont = new CFontDesc("Arial", 12);
}

void exit() {
    assert(factory);
    kNormalFont->forget();
    kNormalFont = nullptr;
    factory.reset();
}

const IPlatformFactory& getPlatformFactory() {
    assert(factory);
    return *factory;
}

} // namespace VSTGUI
