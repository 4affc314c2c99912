// Numbers and words of the plug-in interface that only the host's side speaks.
#pragma once

#include "vst2/aeffect.h"

#include <array>

namespace zelvatone {

enum ProcessLevel : VstInt32 { kProcessLevelUser = 1, kProcessLevelOffline = 4 };
enum AutomationState : VstInt32 { kAutomationOff = 1 };
enum HostLanguage : VstInt32 { kLanguageEnglish = 1 };

// What the host says yes to when a plug-in asks whether it can do something.
inline constexpr std::array kHostCapabilities{"sendVstEvents", "sendVstMidiEvent",
                                              "sendVstTimeInfo", "sizeWindow", "startStopProcess"};

// What `zelvatone info` asks a plug-in about.
inline constexpr std::array kPluginCapabilities{"receiveVstEvents",   "receiveVstMidiEvent",
                                                "receiveVstTimeInfo", "sendVstEvents",
                                                "sendVstMidiEvent",   "offline",
                                                "midiProgramNames",   "bypass"};

} // namespace zelvatone
