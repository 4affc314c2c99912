#include "host/text/FileNames.h"

namespace zelvatone {

namespace {

// A byte of a character beyond ASCII counts as plain.
bool isPlain(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
           (static_cast<unsigned char>(c) & 0x80U) != 0;
}

} // namespace

std::string fileName(std::string_view start, std::string_view name) {
    std::string file(start);
    bool isGap = true;
    for (const char c : name) {
        if (isPlain(c)) {
            file += isGap ? "-" : "";
            file += c;
        }
        isGap = !isPlain(c);
    }
    return file;
}

} // namespace zelvatone
