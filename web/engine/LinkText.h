// Texts in the characters that every address may have.
#pragma once

#include <string>
#include <string_view>

namespace zelvatone {

// Fields one after the other with a tilde between them. A byte that is not a letter, a digit, a
// point, a hyphen or an underscore becomes a percent sign and two hexadecimal digits.
class LinkWriter {
public:
    void add(std::string_view field);
    const std::string& text() const { return text_; }

private:
    std::string text_;
    bool hasFields_ = false;
};

class LinkReader {
public:
    // `text` must outlive the reader.
    explicit LinkReader(std::string_view text) : rest_(text) {}

    // The next field; empty if there is none or if it is not as LinkWriter writes it.
    std::string next();
    // Whether all fields have been read and all were right.
    bool isWhole() const { return isRight_ && isAtEnd_; }

private:
    std::string_view rest_;
    bool isAtEnd_ = false; // behind the last field
    bool isRight_ = true;
};

} // namespace zelvatone
