// A folder that appears under its name only when everything is in it.
#pragma once

#include <filesystem>
#include <functional>

namespace zelvatone {

// Files go to a hidden folder beside the target; commit() gives it the name. Without a commit
// nothing is left and what stood there before is untouched.
class OutputFolder {
public:
    // A folder that stands there already is replaced as a whole by commit(): an empty one, or one
    // for which `isOurs` holds. Throws InputError for any other and when no folder can be made.
    OutputFolder(const std::filesystem::path& path,
                 const std::function<bool(const std::filesystem::path&)>& isOurs);
    ~OutputFolder();
    OutputFolder(const OutputFolder&) = delete;
    OutputFolder& operator=(const OutputFolder&) = delete;

    // Where the files go until commit().
    const std::filesystem::path& hidden() const { return hidden_; }
    // Throws InputError when the folder cannot be given its name.
    void commit();

private:
    void makeHidden();
    [[noreturn]] void fail(const std::string& reason) const;

    std::filesystem::path path_;   // as the user wrote it
    std::filesystem::path target_; // absolute, with links followed
    std::filesystem::path hidden_;
    int descriptor_ = -1; // of the hidden folder; marks it as in use
};

} // namespace zelvatone
