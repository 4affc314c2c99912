#include "host/render/Stems.h"

#include "host/Error.h"
#include "host/audio/NonFinite.h"
#include "host/files/UserPath.h"
#include "host/render/StemList.h"
#include "host/text/Format.h"

#include <system_error>
#include <utility>

namespace zelvatone {

StemFolder::StemFolder(std::filesystem::path path) : path_(std::move(path)) {
    std::error_code error;
    isNew_ = std::filesystem::create_directory(path_, error);
    if (error || !std::filesystem::is_directory(path_, error)) {
        throw InputError(formatText("cannot make the folder {}: {}", path_.string(),
                                    error ? error.message() : "there is a file of that name"));
    }
}

StemFolder::~StemFolder() {
    std::error_code error; // a folder with files in it stays, and so it should
    if (isNew_) {
        std::filesystem::remove(path_, error);
    }
}

Stems::Stems(const std::filesystem::path& folder, const std::string& extension,
             const SoundFileFormat& format, Ensemble& ensemble)
    : folder_(folder), ensemble_(ensemble) {
    for (std::size_t part = 0; part < ensemble.size(); ++part) {
        names_.push_back(ensemble.name(part) + extension);
        writers_.push_back(
            std::make_unique<SoundFileWriter>(folder_.path() / userPath(names_.back()), format));
    }
}

std::vector<std::filesystem::path> Stems::paths() const {
    std::vector<std::filesystem::path> paths;
    paths.reserve(writers_.size());
    for (const auto& writer : writers_) {
        paths.push_back(writer->path());
    }
    return paths;
}

void Stems::require(std::int64_t frames) const {
    for (const auto& writer : writers_) {
        writer->require(frames);
    }
}

std::span<const float> Stems::samples(std::size_t part, std::size_t count) {
    const auto samples = ensemble_.samples(part).first(count);
    silenceNonFinite(samples);
    return samples;
}

void Stems::write(std::size_t part, std::span<const float> samples) {
    writers_[part]->write(samples);
}

void Stems::complete() {
    for (const auto& writer : writers_) {
        writer->complete();
    }
}

void Stems::commit() {
    complete();
    // First: on a disk that takes upper and lower case for the same, an old name may be a new one.
    removeOldStems(folder_.path(), readStemList(folder_.path()), names_);
    for (const auto& writer : writers_) {
        writer->commit();
    }
    writeStemList(folder_.path(), names_);
}

} // namespace zelvatone
