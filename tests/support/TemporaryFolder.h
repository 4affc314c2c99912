// A folder that lives as long as a test.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace zelvatone {

class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::filesystem::path operator/(const std::string& name) const { return path_ / name; }
    const std::filesystem::path& path() const { return path_; }
    // Names of all that is in it, hidden files too, sorted.
    std::vector<std::string> names() const;

private:
    std::filesystem::path path_;
};

std::string readText(const std::filesystem::path& path);
void writeText(const std::filesystem::path& path, const std::string& text);

} // namespace zelvatone
