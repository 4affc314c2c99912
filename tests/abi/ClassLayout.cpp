// Classes with virtual functions that are deleted through their base without a virtual destructor:
// the kinds derived from them must leave a destructor nothing to do. Holds when it compiles.
#include "engine/ADSR.h"
#include "engine/SynthEvent.h"
#include "params/SynthParameter.h"

#include <type_traits>

namespace zelvatone {

template<class... Bases>
constexpr bool haveNoVirtualDestructor = (!std::has_virtual_destructor_v<Bases> && ...);
static_assert(haveNoVirtualDestructor<SynthParameter, SynthEvent, Envelope>);

// A kind of parameter adds no member: the base's destructor destroys all of it.
template<class Base, class... Kinds>
constexpr bool addNoMember = ((std::is_base_of_v<Base, Kinds> && sizeof(Kinds) == sizeof(Base)) &&
                              ...);
static_assert(addNoMember<SynthParameter, PercentSynthParameter, IntegerSynthParameter>);
static_assert(addNoMember<IntegerSynthParameter, WaveSynthParameter, BeatsSynthParameter>);

// An event or an envelope holds plain values.
template<class... Kinds>
constexpr bool holdPlainValues = (std::is_trivially_destructible_v<Kinds> && ...);
static_assert(holdPlainValues<EngineNoteOnEvent, EngineNoteOffEvent, EnginePitchBendEvent, ADSR>);

} // namespace zelvatone
