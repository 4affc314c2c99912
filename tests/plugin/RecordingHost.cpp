#include "tests/plugin/RecordingHost.h"

#include <algorithm>
#include <iterator>

namespace {

RecordingHost* currentHost = nullptr;

} // namespace

RecordingHost::RecordingHost() {
    currentHost = this;
}

RecordingHost::~RecordingHost() {
    currentHost = nullptr;
}

VstIntPtr RecordingHost::callback(AEffect* effect, VstInt32 opcode, VstInt32 index, VstIntPtr value,
                                  void* ptr, float opt) {
    const HostCall call{effect, opcode, index, value, ptr, opt};
    currentHost->calls.push_back(call);
    if (currentHost->onCall) {
        currentHost->onCall(call);
    }
    const auto result = currentHost->results.find(opcode);
    return result == currentHost->results.end() ? 0 : result->second;
}

void RecordingHost::setTime(const VstTimeInfo* time) {
    results[audioMasterGetTime] = reinterpret_cast<VstIntPtr>(time);
}

std::vector<HostCall> RecordingHost::callsOf(VstInt32 opcode) const {
    std::vector<HostCall> found;
    std::copy_if(calls.begin(), calls.end(), std::back_inserter(found),
                 [opcode](const HostCall& call) { return call.opcode == opcode; });
    return found;
}

VstTimeInfo timeWithTempo(double tempo, VstInt32 flags) {
    VstTimeInfo time{};
    time.tempo = tempo;
    time.flags = flags;
    return time;
}
