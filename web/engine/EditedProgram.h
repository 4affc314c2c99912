// The program that the page shows and edits: values as knobs turn them, and what files and links
// keep of it. The page's own thread.
#pragma once

#include "params/ParameterTable.h"
#include "params/SynthProgram.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zelvatone {

// The text of parameter `index` with its knob at `normalised`, 0 to 1.
std::string displayAt(ParameterIndex index, float normalised);

// What to set `parameter` to, 0 to 1, so that it becomes what it is. Exact for whole numbers and
// for values that were set like this; a value that a factory program gives may lie between two such
// values, and the nearest of them has to do.
float settingOf(const SynthParameter& parameter);

class EditedProgram {
public:
    // "Default".
    EditedProgram();

    // A fresh copy of factory program `program`, which exists.
    void load(std::int32_t program);
    // The factory program that was loaded last.
    std::int32_t number() const { return number_; }
    std::string name() const { return program_.name.text(); }

    // As a host sets a parameter of the plug-in, 0 to 1.
    void set(ParameterIndex index, float normalised);
    float setting(ParameterIndex index) const { return settingOf(parameter(index)); }
    // What the engine takes.
    float units(ParameterIndex index) const { return parameter(index).value; }

    // The bytes of an .fxp file, those that the plug-in's host writes.
    std::vector<std::uint8_t> file() const;
    // Takes the values and the name of such a file. Returns what is wrong with it, with nothing
    // taken, or an empty text.
    std::string takeFile(std::span<const std::uint8_t> bytes);

    // Everything, with a tempo in beats per minute, in characters that addresses may have. Every
    // number reads back exactly.
    std::string link(float tempo) const;
    // Takes what link() wrote, and its tempo into `tempo`. Returns false for any other text, with
    // nothing taken.
    bool takeLink(std::string_view text, float& tempo);

private:
    SynthParameter& parameter(ParameterIndex index) const;

    SynthProgram program_;
    std::int32_t number_ = 0;
};

} // namespace zelvatone
