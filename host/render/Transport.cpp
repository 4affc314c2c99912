#include "host/render/Transport.h"

namespace zelvatone {

Transport::Transport(const Song& song, double sampleRate) : song_(song), sampleRate_(sampleRate) {}

VstTimeInfo Transport::at(std::int64_t frame) const {
    const double seconds = static_cast<double>(frame) / sampleRate_;
    VstTimeInfo time{};
    time.samplePos = static_cast<double>(frame);
    time.sampleRate = sampleRate_;
    time.ppqPos = song_.tempo.quartersAtSeconds(seconds);
    time.tempo = song_.tempo.tempoAtSeconds(seconds);
    const MeterMap::Bar bar = song_.meter.barAt(time.ppqPos);
    time.barStartPos = bar.startQuarters;
    time.timeSigNumerator = bar.numerator;
    time.timeSigDenominator = bar.denominator;
    time.flags = kVstTransportPlaying | kVstPpqPosValid | kVstTempoValid | kVstBarsValid |
                 kVstTimeSigValid | (frame == 0 ? kVstTransportChanged : 0);
    return time;
}

} // namespace zelvatone
