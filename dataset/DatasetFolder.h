// The folder of a dataset: which files lie where, and to which dataset they belong.
#pragma once

#include "dataset/DatasetPlan.h"
#include "host/text/Json.h"

#include <cstdint>
#include <filesystem>
#include <string>

namespace zelvatone {

// Files of a dataset are whole or not there. Several processes may work in one folder.
class DatasetFolder {
public:
    explicit DatasetFolder(std::filesystem::path path) : path_(std::move(path)) {}

    // Prepares a new folder for the plan, or checks that it holds the same dataset, made by a
    // program that makes the same sounds and the same files of them. `command` is noted in a new
    // one. Throws InputError for a folder with anything else in it, or one that cannot be written.
    void prepare(const DatasetPlan& plan, const std::string& command,
                 const std::filesystem::path& table);
    // Reads back the plan. Throws InputError for a folder without a dataset, and for one of another
    // sound than this program's.
    DatasetPlan open();

    // After prepare() or open(): what the manifest begins with.
    const Json& description() const { return description_; }
    // Tells datasets apart.
    const std::string& identity() const { return identity_; }

    const std::filesystem::path& path() const { return path_; }
    std::filesystem::path archive(const std::string& key) const;
    // The labels of a shard, and what is known about its files once it is finished.
    std::filesystem::path labels(const std::string& key) const;
    std::filesystem::path record(const std::string& key) const;
    std::filesystem::path manifest() const { return path_ / "manifest.json"; }
    std::filesystem::path parameters() const { return path_ / "parameters.csv"; }

private:
    std::filesystem::path descriptionFile() const { return path_ / "dataset.json"; }
    std::filesystem::path tableFile() const { return path_ / "table.csv"; }
    void takeOn(const Json& description);
    void keepTable(const std::filesystem::path& table) const;

    std::filesystem::path path_;
    Json description_;
    std::string identity_;
};

// Writes a file that is whole or not there. Throws InputError.
void writeWhole(const std::filesystem::path& path, const std::string& text);
// Throws InputError with the path for what cannot be read, or not as JSON.
Json readJson(const std::filesystem::path& path);

} // namespace zelvatone
