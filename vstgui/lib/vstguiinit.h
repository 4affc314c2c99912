// Start and end of the toolkit.
#pragma once

#include "vstgui/lib/platform/platformfwd.h"

namespace VSTGUI {

// Before any view, picture or frame is made. Makes the platform's factory and the default font.
// `instance` is the module whose resources are meant; may be null. One call until `exit`: a module
// with several windows counts them. User-interface thread.
void init(PlatformInstanceHandle instance);
// After the last view, picture and frame is gone; `init` may follow again.
void exit();

} // namespace VSTGUI
