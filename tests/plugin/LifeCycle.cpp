// A whole life of the plug-in in the hands of a host, for a memory checker to watch: two instances,
// a second of notes, program and parameter changes, close. Takes the library's path; exit status 0
// when it was played to the end.
#include "tests/plugin/HostedEffect.h"
#include "tests/plugin/RecordingHost.h"

#include <algorithm>
#include <cstdio>

#include <dlfcn.h>

namespace {

using Entry = AEffect* (*)(audioMasterCallback);

constexpr float kRate = 44100.0F;
constexpr VstInt32 kBlockSize = 441; // a hundredth of a second
constexpr int kBlocks = 100;

void readAllTexts(const HostedEffect& effect) {
    for (const VstInt32 request :
         {effGetEffectName, effGetVendorString, effGetProductString, effGetProgramName}) {
        effect.text(request);
    }
    for (VstInt32 i = 0; i < effect.record->numParams; ++i) {
        for (const VstInt32 request : {effGetParamName, effGetParamLabel, effGetParamDisplay}) {
            effect.text(request, i);
        }
    }
    VstPinProperties pins{};
    effect.ask(effGetOutputProperties, 0, 0, &pins);
}

// A new note every tenth of a second, each held for two tenths, a bend in the middle.
float playASecond(const HostedEffect& effect) {
    float peak = 0.0F;
    for (int block = 0; block < kBlocks; ++block) {
        if (block % 10 == 0) {
            const int note = 48 + block / 2;
            effect.send({{0x90, note, 100, 17}, {0x80, note - 10, 0, 200}, {0xE0, 0, block, 300}});
            effect.setParameter(block / 10, 0.3F);
        }
        peak = std::max(peak, effect.render(kBlockSize).peak());
    }
    effect.send({{0xB0, 123, 0}});
    effect.render(kBlockSize);
    return peak;
}

float live(Entry entry) {
    const HostedEffect effect(entry(RecordingHost::callback));
    effect.ask(effOpen);
    effect.ask(effSetSampleRate, 0, 0, nullptr, kRate);
    effect.ask(effSetBlockSize, 0, kBlockSize);
    effect.ask(effMainsChanged, 0, 1);
    readAllTexts(effect);
    const float peak = playASecond(effect);
    effect.ask(effSetProgram, 0, effect.record->numPrograms - 1);
    effect.ask(effMainsChanged, 0, 0);
    effect.ask(effClose);
    return peak;
}

} // namespace

int main(int argc, char** argv) {
    // Never unloaded: the checker reads the names of allocating functions at the very end.
    void* library = argc == 2 ? dlopen(argv[1], RTLD_NOW | RTLD_LOCAL) : nullptr;
    if (library == nullptr) {
        std::fprintf(stderr, "usage: plugin_life_cycle PLUGIN.so\n");
        return 2;
    }
    const auto entry = reinterpret_cast<Entry>(dlsym(library, "VSTPluginMain"));
    RecordingHost host;
    const VstTimeInfo time = timeWithTempo(137.0);
    host.setTime(&time);
    const float first = live(entry);
    const float second = live(entry);
    std::printf("peaks: %f %f\n", static_cast<double>(first), static_cast<double>(second));
    return first > 0.0F && first == second ? 0 : 1;
}
