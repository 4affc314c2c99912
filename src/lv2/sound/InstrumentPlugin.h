// The instrument behind LV2's ports.
#pragma once

#include "formats/Instrument.h"
#include "lv2/Identity.h"
#include "lv2/sound/ParameterPort.h"
#include "lv2/sound/Uris.h"

#include <lv2/state/state.h>

#include <array>
#include <cstdint>

namespace zelvatone::lv2 {

// The host never calls two of these at once, except save, which it may call while a block runs.
class InstrumentPlugin {
public:
    // `sampleRate`: Hz.
    InstrumentPlugin(double sampleRate, const LV2_URID_Map& map);

    // `data` is the host's; null for a port that it leaves out. Audio thread, as are the next two.
    void connect(std::uint32_t port, void* data);
    // Ends all sound.
    void reset() { instrument_.reset(); }
    // Fills the audio ports; the control ports' values hold from the block's start.
    void run(std::uint32_t frames);

    // The exact values, beside those that the host keeps of the ports.
    LV2_State_Status save(LV2_State_Store_Function store, LV2_State_Handle handle) const;
    // Changes nothing unless all of the state can be read.
    LV2_State_Status restore(LV2_State_Retrieve_Function retrieve, LV2_State_Handle handle);

private:
    void readControls();
    void readEvents();
    void readEvent(const LV2_Atom_Event& event);
    void readPosition(std::int32_t frame, const LV2_Atom_Object& position);

    const Uris uris_;
    Instrument instrument_;
    const LV2_Atom_Sequence* events_ = nullptr;
    float* left_ = nullptr;
    float* right_ = nullptr;
    const float* enabled_ = nullptr;
    std::array<ParameterPort, kShownParameters> parameters_;
};

} // namespace zelvatone::lv2
