// The files of a rendering: the mix, and one for each part that plays in it.
#pragma once

#include "host/audio/SoundFileWriter.h"
#include "host/render/Ensemble.h"

#include <filesystem>
#include <memory>
#include <vector>

namespace zelvatone {

// A folder for files. One that was not there is made, and goes again when it stays empty.
class StemFolder {
public:
    // Throws InputError when the folder cannot be made.
    explicit StemFolder(std::filesystem::path path);
    ~StemFolder();
    StemFolder(const StemFolder&) = delete;
    StemFolder& operator=(const StemFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
    bool isNew_ = false;
};

// One sound file for each part of an ensemble. They appear when they are complete.
class Stems {
public:
    // `extension` with its point. Throws InputError when a file cannot be written.
    Stems(const std::filesystem::path& folder, const std::string& extension,
          const SoundFileFormat& format, Ensemble& ensemble);

    std::vector<std::filesystem::path> paths() const;

    // Throws InputError when a file of that many frames is more than its format can hold.
    void require(std::int64_t frames) const;
    std::size_t size() const { return writers_.size(); }
    // The first `count` samples of a part's last round, without any that is not finite.
    std::span<const float> samples(std::size_t part, std::size_t count);
    // Appends to a part's file. Throws InputError.
    void write(std::size_t part, std::span<const float> samples);
    // Of a part's file.
    std::int64_t clippedSamples(std::size_t part) const { return writers_[part]->clippedSamples(); }
    // All complete, then all named, and stems of an earlier rendering with other names removed from
    // the folder. Throw InputError.
    void complete();
    void commit();

private:
    StemFolder folder_;
    Ensemble& ensemble_;
    std::vector<std::string> names_; // of the files
    std::vector<std::unique_ptr<SoundFileWriter>> writers_;
};

} // namespace zelvatone
