// The host's numbers for the URIs that the sound reads or writes.
#pragma once

#include <lv2/atom/atom.h>
#include <lv2/midi/midi.h>
#include <lv2/time/time.h>
#include <lv2/urid/urid.h>

#include "lv2/Identity.h"

namespace zelvatone::lv2 {

struct Uris {
    explicit Uris(const LV2_URID_Map& map)
        : blank(map.map(map.handle, LV2_ATOM__Blank)),
          doubleNumber(map.map(map.handle, LV2_ATOM__Double)),
          floatNumber(map.map(map.handle, LV2_ATOM__Float)),
          object(map.map(map.handle, LV2_ATOM__Object)),
          string(map.map(map.handle, LV2_ATOM__String)),
          midiEvent(map.map(map.handle, LV2_MIDI__MidiEvent)),
          position(map.map(map.handle, LV2_TIME__Position)),
          beatsPerMinute(map.map(map.handle, LV2_TIME__beatsPerMinute)),
          state(map.map(map.handle, kStateUri)) {}

    LV2_URID blank; // what older hosts call an object
    LV2_URID doubleNumber;
    LV2_URID floatNumber;
    LV2_URID object;
    LV2_URID string;
    LV2_URID midiEvent;
    LV2_URID position;
    LV2_URID beatsPerMinute;
    LV2_URID state;
};

} // namespace zelvatone::lv2
