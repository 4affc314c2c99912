// The name of a program.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace zelvatone {

// A text in storage that never moves. A host may set a name on one thread while another reads it:
// the reader then gets a part of the new name and a part of the old one, always terminated and
// inside the storage. Any thread, without lock or allocation.
class ProgramName {
public:
    // Hosts set 24 characters at most, and no factory name is longer; programs that are built in
    // other ways have some room more.
    static constexpr std::size_t kMostCharacters = 63;
    // With the terminating zero.
    using Characters = std::array<char, kMostCharacters + 1>;

    // Names are cut after kMostCharacters characters, and at a zero.
    explicit ProgramName(std::string_view name) { *this = name; }
    ProgramName(const ProgramName& other) { *this = other; }
    ProgramName& operator=(const ProgramName& other);
    ProgramName& operator=(std::string_view name);
    ~ProgramName() = default;

    // A copy of the name, filled up with zeros.
    Characters characters() const;
    std::string text() const { return characters().data(); }

    friend bool operator==(const ProgramName& a, std::string_view b) { return a.text() == b; }
    friend bool operator==(const ProgramName& a, const ProgramName& b) {
        return a.characters() == b.characters();
    }

private:
    using Words = std::array<std::uint64_t, sizeof(Characters) / sizeof(std::uint64_t)>;

    void store(const Characters& characters);

    Words words_{}; // the characters, in units that are read and written whole
};

} // namespace zelvatone
