// Carries presets out of a plug-in and into it.
#pragma once

#include "host/plugin/HostedPlugin.h"
#include "host/preset/Preset.h"

namespace zelvatone {

// The current program, or all programs. The same program is current afterwards.
Preset takeProgram(HostedPlugin& plugin);
Preset takeBank(HostedPlugin& plugin);

// Throws InputError when the preset is for another plug-in or has another number of parameters or
// programs than `plugin`.
void checkPreset(const Preset& preset, const HostedPlugin& plugin);

// Puts a program in the place of the current one, or a bank in the place of all, with its current
// program. The preset must fit, see checkPreset().
void applyPreset(HostedPlugin& plugin, const Preset& preset);

// Sets a parameter so that the plug-in reports just `value`, wherever a neighbour of it among the
// floats does that: a value that a plug-in reported and that is set again may land beside itself
// through rounding, a whole step lower for parameters that round down.
void setAsReported(HostedPlugin& plugin, int index, float value);

} // namespace zelvatone
