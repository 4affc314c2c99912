// The file that bytes go to before it takes its name.
#pragma once

#include <filesystem>

namespace zelvatone {

// In the target's folder. On Linux the file has no name until then, where the file system can do
// that, so that nothing is left of a killed process; elsewhere it is hidden, see Leftovers.h.
class StagedFile {
public:
    // With the mode of the target where there is one, or that of any new file. Check
    // descriptor() afterwards: below 0 the file could not be made, and errno says why.
    explicit StagedFile(const std::filesystem::path& target);
    // Removes the file unless it has its name.
    ~StagedFile();
    StagedFile(const StagedFile&) = delete;
    StagedFile& operator=(const StagedFile&) = delete;

    // Open for reading and writing, in this process alone.
    int descriptor() const { return descriptor_; }
    // Gives the file the target's name, in place of the file that has it; once, and as the last
    // call. Returns 0, or -1 with the reason in errno.
    int publish();

private:
    void openHidden(unsigned int mode);
    int nameHidden();
    void removeHidden() noexcept;

    std::filesystem::path target_;
    std::filesystem::path hidden_; // empty while the file has no name
    int descriptor_ = -1;
};

} // namespace zelvatone
