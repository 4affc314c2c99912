// Plays a phrase with every program of the plug-in and writes the samples into a file: 32-bit
// floats, program after program, left and right channel in turn. Built for both systems, so that
// what they play can be compared.
#include "tests/plugin/LoadedPlugin.h"

#include <cstdio>
#include <fstream>
#include <map>
#include <vector>

namespace {

constexpr VstInt32 kBlock = 441;
constexpr VstInt32 kSampleRate = 44100;
constexpr VstInt32 kPhrase = 3 * kSampleRate; // samples; room for shifts, glides and releases

// Three notes that overlap, and a bend, by the sample at which each message comes.
const std::multimap<VstInt32, MidiMessage> kMessages{
    {0, {0x90, 45, 100}},         {kSampleRate / 2, {0x90, 64, 127}},
    {kSampleRate, {0xE0, 0, 80}}, {3 * kSampleRate / 2, {0x80, 45, 0}},
    {65000, {0xE0, 0, 64}},       {70000, {0x90, 81, 60}},
    {100000, {0x80, 64, 0}},      {110000, {0x80, 81, 0}}};

std::vector<MidiMessage> messagesBetween(VstInt32 begin, VstInt32 end) {
    std::vector<MidiMessage> messages;
    for (auto next = kMessages.lower_bound(begin); next != kMessages.lower_bound(end); ++next) {
        MidiMessage message = next->second;
        message.deltaFrames = next->first - begin;
        messages.push_back(message);
    }
    return messages;
}

void write(std::ofstream& file, const std::vector<float>& samples) {
    file.write(reinterpret_cast<const char*>(samples.data()),
               static_cast<std::streamsize>(samples.size() * sizeof(float)));
}

void play(VstInt32 program, std::ofstream& file) {
    const LoadedPlugin plugin; // a fresh one: nothing of the program before is left
    plugin.ask(effSetSampleRate, 0, 0, nullptr, static_cast<float>(kSampleRate));
    plugin.ask(effSetProgram, 0, program);
    plugin.ask(effMainsChanged, 0, 1);
    for (VstInt32 start = 0; start < kPhrase; start += kBlock) {
        plugin.send(messagesBetween(start, start + kBlock));
        const StereoBlock block = plugin.render(kBlock);
        write(file, block.left);
        write(file, block.right);
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: program_player FILE\n");
        return 2;
    }
    const RecordingHost host;
    const VstInt32 programs = LoadedPlugin().record->numPrograms;
    std::ofstream file(argv[1], std::ios::binary);
    for (VstInt32 program = 0; program < programs; ++program) {
        play(program, file);
    }
    file.close();
    return file ? 0 : 1;
}
