// The plug-in's base at the place where GUI toolkits look for it.
#pragma once

#include "vst2/audioeffectx.h"
