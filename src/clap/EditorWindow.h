// What differs between platforms: how a CLAP host names its windows.
#pragma once

#include "clap/abi/Extensions.h"

namespace zelvatone {

// The one kind of window that the editor opens in.
const char* windowApi();

// The host's window, of that kind, as the editor takes it.
void* parentOf(const clap::Window& window);

} // namespace zelvatone
