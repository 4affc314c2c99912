#include "dataset/TarArchive.h"

#include "host/Error.h"
#include "host/text/Format.h"
#include "host/threads/Interrupt.h"

#include <archive.h>
#include <archive_entry.h>

#include <system_error>
#include <vector>

namespace zelvatone {

namespace {

constexpr std::size_t kBlock = std::size_t{64} * 1024; // bytes handed over at a time

struct EntryFree {
    void operator()(archive_entry* entry) const { archive_entry_free(entry); }
};
using Entry = std::unique_ptr<archive_entry, EntryFree>;

struct ReaderFree {
    void operator()(archive* reader) const { archive_read_free(reader); }
};
using Reader = std::unique_ptr<archive, ReaderFree>;

Reader openTar(const std::filesystem::path& path) {
    Reader reader(archive_read_new());
    if (reader == nullptr || archive_read_support_format_tar(reader.get()) != ARCHIVE_OK ||
        archive_read_open_filename(reader.get(), path.c_str(), kBlock) != ARCHIVE_OK) {
        throw InputError(formatText("{} cannot be read", path.string()));
    }
    return reader;
}

} // namespace

// The target remembers that a write failed, and tells it better than the library could.
la_ssize_t TarWriter::writeBlock(archive* /*archive*/, void* user, const void* bytes,
                                 std::size_t count) {
    auto* writer = static_cast<TarWriter*>(user);
    writer->target_.write(bytes, static_cast<std::int64_t>(count));
    writer->sum_.add({static_cast<const char*>(bytes), count});
    return static_cast<la_ssize_t>(count);
}

TarWriter::TarWriter(ByteTarget& target, Sha256& sum)
    : target_(target), sum_(sum), archive_(archive_write_new()) {
    if (archive_ == nullptr) {
        throw InputError(formatText("cannot write {}: no memory", target.name()));
    }
    archive_write_set_format_ustar(archive_.get());
    archive_write_set_bytes_per_block(archive_.get(), kBlock);
    archive_write_set_bytes_in_last_block(archive_.get(), 1); // not filled up
    check(archive_write_open(archive_.get(), this, nullptr, writeBlock, nullptr));
}

void TarWriter::check(int result) {
    target_.check();
    if (result != ARCHIVE_OK) {
        const char* reason = archive_error_string(archive_.get());
        throw InputError(formatText("cannot write {}: {}", target_.name(),
                                    reason == nullptr ? "no memory" : reason));
    }
}

void TarWriter::add(const std::string& name, std::span<const char> bytes) {
    constexpr int kReadable = 0644;
    const Entry entry(archive_entry_new());
    if (entry == nullptr) {
        throw InputError(formatText("cannot write {}: no memory", target_.name()));
    }
    archive_entry_set_pathname(entry.get(), name.c_str());
    archive_entry_set_size(entry.get(), static_cast<la_int64_t>(bytes.size()));
    archive_entry_set_filetype(entry.get(), AE_IFREG);
    archive_entry_set_perm(entry.get(), kReadable);
    archive_entry_set_mtime(entry.get(), 0, 0);
    check(archive_write_header(archive_.get(), entry.get()));
    if (archive_write_data(archive_.get(), bytes.data(), bytes.size()) !=
        static_cast<la_ssize_t>(bytes.size())) {
        check(ARCHIVE_FATAL);
    }
}

void TarWriter::finish() {
    check(archive_write_close(archive_.get()));
}

void readTar(const std::filesystem::path& path, const TarFileUse& use) {
    const Reader reader = openTar(path);
    std::error_code error; // a file that is gone now has no bytes
    const auto whole = static_cast<la_int64_t>(std::filesystem::file_size(path, error));
    archive_entry* entry = nullptr;
    std::vector<char> bytes;
    int result = ARCHIVE_OK;
    while ((result = archive_read_next_header(reader.get(), &entry)) == ARCHIVE_OK) {
        InterruptWatch::check();
        const char* name = archive_entry_pathname(entry);
        const la_int64_t size = archive_entry_size(entry);
        if (name == nullptr || size < 0 || size > whole) {
            break; // a damaged header
        }
        bytes.resize(static_cast<std::size_t>(size));
        if (archive_read_data(reader.get(), bytes.data(), bytes.size()) !=
            static_cast<la_ssize_t>(bytes.size())) {
            break;
        }
        use(name, bytes);
    }
    if (result != ARCHIVE_EOF) {
        throw InputError(formatText("{} is not a whole archive", path.string()));
    }
}

} // namespace zelvatone
