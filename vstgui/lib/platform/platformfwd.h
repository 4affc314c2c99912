// Names of the platform's side.
#pragma once

namespace VSTGUI {

// The module that the toolkit is part of: a dlopen handle, or an HINSTANCE.
using PlatformInstanceHandle = void*;

} // namespace VSTGUI
