// Archives of the form tar that are the same on every machine: no times, no users.
#pragma once

#include "dataset/Sha256.h"
#include "host/files/ByteTarget.h"

#include <archive.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <span>
#include <string>

namespace zelvatone {

class TarWriter {
public:
    // Every byte goes to `target` and into `sum`, which outlive the writer.
    TarWriter(ByteTarget& target, Sha256& sum);
    ~TarWriter() = default;
    TarWriter(const TarWriter&) = delete;
    TarWriter& operator=(const TarWriter&) = delete;

    // Appends a file. `name` is ASCII, of at most 100 bytes. Throws InputError when the target
    // cannot be written.
    void add(const std::string& name, std::span<const char> bytes);
    // Writes the end. Throws InputError when that fails.
    void finish();

private:
    static la_ssize_t writeBlock(archive* /*archive*/, void* user, const void* bytes,
                                 std::size_t count);
    void check(int result);

    struct Free {
        void operator()(archive* writer) const { archive_write_free(writer); }
    };

    ByteTarget& target_;
    Sha256& sum_;
    std::unique_ptr<archive, Free> archive_;
};

// Calls `use` for each file, in order. Throws InputError with the path when it cannot be read or is
// not a whole archive; Interrupted.
using TarFileUse = std::function<void(const std::string& name, std::span<const char> bytes)>;
void readTar(const std::filesystem::path& path, const TarFileUse& use);

} // namespace zelvatone
