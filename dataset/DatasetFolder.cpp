#include "dataset/DatasetFolder.h"

#include "dataset/Fingerprint.h"
#include "dataset/Sha256.h"
#include "host/Error.h"
#include "host/files/FileBytes.h"
#include "host/files/OutputFile.h"
#include "host/text/Format.h"

#include <string_view>
#include <system_error>

namespace zelvatone {

namespace {

namespace fs = std::filesystem;

constexpr int kFormat = 2; // of all files of a dataset together
constexpr std::size_t kLargestJson = std::size_t{1} << 26U;

Json describe(const DatasetPlan& plan, const fs::path& table) {
    const Fingerprint fingerprint = fingerprintOf(plan.isFlac);
    Json description{{"format", kFormat},
                     {"zelvatone", ZELVATONE_VERSION},
                     {"sound", fingerprint.sound},
                     {"encoder", fingerprint.encoder}};
    description.update(planJson(plan));
    description["table_sha256"] = table.empty() ? Json() : Json(sha256Of(table));
    return description;
}

Json withoutCommand(Json description) {
    description.erase("command");
    return description;
}

// Another process may be preparing the same folder: what it makes there is no other file.
bool holdsOtherFiles(const fs::path& folder) {
    constexpr std::string_view kHidden = ".zelvatone-"; // of files that are being written
    std::error_code error; // what cannot be read shows when it is written to
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        const bool isOurs = name == "shards" || name == "parts" || name == "table.csv" ||
                            name == "dataset.json" || name.starts_with(kHidden);
        if (!isOurs) {
            return true;
        }
    }
    return false;
}

// The first key whose values differ.
std::string differenceOf(const Json& held, const Json& wanted) {
    for (const auto& [key, value] : wanted.items()) {
        if (!held.contains(key) || held.at(key) != value) {
            return key;
        }
    }
    return "format";
}

} // namespace

void writeWhole(const fs::path& path, const std::string& text) {
    OutputFile file(path);
    file.write(text.data(), static_cast<std::int64_t>(text.size()));
    file.commit();
}

Json readJson(const fs::path& path) {
    try {
        const auto bytes = readBytes(path, kLargestJson, "JSON file");
        Json json = Json::parse(bytes.begin(), bytes.end(), nullptr, false);
        if (!json.is_object()) {
            throw InputError("is not JSON");
        }
        return json;
    } catch (const InputError& error) {
        throw InputError(formatText("{} {}", path.string(), error.what()));
    }
}

fs::path DatasetFolder::archive(const std::string& key) const {
    return path_ / "shards" / (key + ".tar");
}

fs::path DatasetFolder::labels(const std::string& key) const {
    return path_ / "parts" / (key + ".csv");
}

fs::path DatasetFolder::record(const std::string& key) const {
    return path_ / "parts" / (key + ".json");
}

void DatasetFolder::takeOn(const Json& description) {
    description_ = description;
    Sha256 sum;
    sum.add(jsonText(withoutCommand(description)));
    identity_ = sum.take();
}

// Another process may have put it there already; a file that the user left there stays as it is.
void DatasetFolder::keepTable(const fs::path& table) const {
    std::error_code error; // shows when the file is written
    if (fs::exists(tableFile(), error)) {
        if (sha256Of(tableFile()) != sha256Of(table)) {
            throw InputError(
                formatText("cannot write {}: there is another table in it; name a new folder",
                           path_.string()));
        }
        return;
    }
    const auto bytes = readBytes(table, std::size_t{1} << 30U, "table of sounds");
    writeWhole(tableFile(), {bytes.begin(), bytes.end()});
}

void DatasetFolder::prepare(const DatasetPlan& plan, const std::string& command,
                            const fs::path& table) {
    const Json wanted = describe(plan, table);
    std::error_code error; // shows below, when a file is written
    if (!fs::exists(descriptionFile(), error) && holdsOtherFiles(path_)) {
        throw InputError(formatText(
            "cannot write {}: there are other files in it; name a new folder", path_.string()));
    }
    fs::create_directories(path_ / "shards", error);
    if (!error) {
        fs::create_directories(path_ / "parts", error);
    }
    if (error) {
        throw InputError(formatText("cannot write {}: {}", path_.string(), error.message()));
    }
    if (!fs::exists(descriptionFile(), error)) {
        if (!table.empty()) {
            keepTable(table);
        }
        Json description = wanted;
        description["command"] = command;
        writeWhole(descriptionFile(), jsonText(description));
    }
    // Another process may have been faster, and its own is then the one that holds.
    takeOn(readJson(descriptionFile()));
    if (withoutCommand(description_) != wanted) {
        throw InputError(
            formatText("{} holds another dataset, with another '{}'; name a new folder",
                       path_.string(), differenceOf(description_, wanted)));
    }
}

DatasetPlan DatasetFolder::open() {
    takeOn(readJson(descriptionFile()));
    DatasetPlan plan;
    try {
        plan = planOf(description_);
    } catch (const InputError& error) {
        throw InputError(formatText("{} {}", descriptionFile().string(), error.what()));
    }
    const bool hasTable =
        description_.contains("table_sha256") && description_.at("table_sha256").is_string();
    const Json own = describe(plan, hasTable ? tableFile() : fs::path());
    if (withoutCommand(description_) != own) {
        throw InputError(formatText("{} was made by a program with another '{}'", path_.string(),
                                    differenceOf(description_, own)));
    }
    if (hasTable) {
        plan.table = readSoundTable(tableFile());
    }
    return plan;
}

} // namespace zelvatone
