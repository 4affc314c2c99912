// The toolkit, after the headers of the plug-in interface: it defines a key record of its own
// unless it sees that they were included.
#pragma once

#include "public.sdk/source/vst2.x/aeffeditor.h"
#include "public.sdk/source/vst2.x/audioeffectx.h"

#include "vstgui/vstgui.h"
