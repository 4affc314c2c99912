#include "host/audio/OggSerial.h"

#include "host/Error.h"
#include "host/text/Format.h"

#include <ogg/ogg.h>

#include <array>
#include <cstdio>
#include <vector>

namespace zelvatone {

namespace {

constexpr std::int64_t kFixedHeader = 27; // bytes of a page before its table of lengths
constexpr std::size_t kSerialAt = 14;     // four bytes, lowest first
constexpr std::size_t kTableLengthAt = 26;

// One page: its header with the table of lengths, and its body. Empty at the end of the file.
struct Page {
    std::vector<unsigned char> header;
    std::vector<unsigned char> body;
};

bool readAll(ByteTarget& file, unsigned char* target, std::size_t count) {
    const auto wanted = static_cast<std::int64_t>(count);
    return file.read(target, wanted) == wanted;
}

bool readPage(ByteTarget& file, Page& page) {
    page.header.resize(kFixedHeader);
    if (!readAll(file, page.header.data(), kFixedHeader)) {
        return false;
    }
    const std::size_t tableLength = page.header[kTableLengthAt];
    page.header.resize(kFixedHeader + tableLength);
    if (!readAll(file, page.header.data() + kFixedHeader, tableLength)) {
        return false;
    }
    std::size_t bodyLength = 0;
    for (std::size_t i = 0; i < tableLength; ++i) {
        bodyLength += page.header[kFixedHeader + i];
    }
    page.body.resize(bodyLength);
    return readAll(file, page.body.data(), bodyLength);
}

void renumber(Page& page) {
    const std::array<unsigned char, 4> serial{1, 0, 0, 0};
    std::copy(serial.begin(), serial.end(), page.header.begin() + kSerialAt);
    ogg_page view{page.header.data(), static_cast<long>(page.header.size()), page.body.data(),
                  static_cast<long>(page.body.size())};
    ogg_page_checksum_set(&view);
}

} // namespace

void settleOggSerial(ByteTarget& file) {
    const std::int64_t end = file.size();
    std::int64_t at = file.seek(0, SEEK_SET);
    Page page;
    while (at < end) {
        if (!readPage(file, page)) {
            throw InputError(formatText("cannot write {}: it cannot be read back", file.name()));
        }
        renumber(page);
        file.seek(at, SEEK_SET);
        const auto headerLength = static_cast<std::int64_t>(page.header.size());
        file.write(page.header.data(), headerLength);
        at = file.seek(static_cast<std::int64_t>(page.body.size()), SEEK_CUR);
    }
}

} // namespace zelvatone
