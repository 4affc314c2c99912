#include "dataset/Sha256.h"
#include "dataset/TarArchive.h"
#include "host/text/Json.h"
#include "tests/support/MidiFileBuilder.h"
#include "tests/support/Program.h"
#include "tests/support/SoundFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <map>
#include <memory>
#include <thread>

namespace zelvatone {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

namespace fs = std::filesystem;

class DatasetCommand : public ::testing::Test {
protected:
    using Words = std::vector<std::string>;

    // 40 short sounds in shards of 14, the last of 12.
    static Words small(const std::string& folder, const Words& more = {}) {
        Words words{"dataset",       folder,   "--count", "40", "--seconds",   "0.05", "--vary",
                    "Attack=0:0.01", "--seed", "5",       "-q", "--per-shard", "14"};
        words.insert(words.end(), more.begin(), more.end());
        return words;
    }
    std::string in(const std::string& name) const { return (folder_ / name).string(); }
    void make(const std::string& name, const Words& more = {}) const {
        const ProgramResult result = zelvatoneWith(small(in(name), more));
        EXPECT_EQ(result.exitStatus, 0) << result.errors;
    }
    // Every file of a dataset with its checksum.
    std::map<std::string, std::string> sums(const std::string& name) const {
        std::map<std::string, std::string> found;
        for (const auto& entry : fs::recursive_directory_iterator(folder_ / name)) {
            if (entry.is_regular_file()) {
                found[fs::relative(entry.path(), folder_ / name).string()] = sha256Of(entry.path());
            }
        }
        return found;
    }
    void expectError(const Words& words, const std::string& line, int status = 1) const {
        const ProgramResult result = zelvatoneWith(words);
        EXPECT_THAT(result.errors, HasSubstr(line));
        EXPECT_THAT(result.errors, StartsWith("zelvatone: "));
        EXPECT_EQ(std::count(result.errors.begin(), result.errors.end(), '\n'), 1);
        EXPECT_EQ(result.exitStatus, status);
    }
    void flipByte(const std::string& name) const {
        std::string bytes = readText(folder_ / name);
        bytes.at(1000) ^= 1; // of an archive: in the first sound
        writeText(folder_ / name, bytes);
    }

    TemporaryFolder folder_;
    std::vector<std::unique_ptr<TemporaryFolder>> logs_; // of programs that run at once
};

TEST_F(DatasetCommand, SameBytesForEveryNumberOfThreadsAndParts) {
    make("one", {"--threads", "1"});
    EXPECT_EQ(sums("one").size(), 3U * 3 + 3);
    make("two", {"--threads", "3"});
    EXPECT_EQ(sums("two"), sums("one"));
    for (const char* part : {"3/4", "1/4", "4/4", "2/4"}) {
        make("parts", {"--shard", part});
    }
    EXPECT_EQ(sums("parts"), sums("one"));
}

// To the bit: what `zelvatone render` makes of the same note with the plug-in file.
TEST_F(DatasetCommand, SoundsAreThoseOfThePluginFile) {
    const TrackBytes track = TrackBytes().noteOn(0, 57).event(288, {0x80, 57, 0}).end(0);
    writeBytes(in("a.mid"), midiFileBytes(0, 480, {track})); // 120 beats per minute: 0.3 s
    for (const std::string program : {"Organ", "Banana Bass", "Default"}) {
        EXPECT_EQ(zelvatoneWith({"render", in("a.mid"), "-o", in("a.wav"), "--format", "float",
                                 "--program", program, "--raw", "--tail", "0.3", "-q"})
                      .exitStatus,
                  0);
        EXPECT_EQ(zelvatoneWith({"dataset", in(program), "--count", "1", "--seconds", "0.5",
                                 "--hold", "0.3", "--programs", program, "--notes", "57",
                                 "--velocities", "64", "-q"})
                      .exitStatus,
                  0);
        std::vector<float> samples;
        readTar(in(program) + "/shards/000000.tar",
                [&](const std::string& name, std::span<const char> bytes) {
                    if (name == "000000.wav") {
                        writeText(in("b.wav"), {bytes.begin(), bytes.end()});
                        samples = readSoundFile(in("b.wav")).samples;
                    }
                });
        std::vector<float> rendered = readSoundFile(in("a.wav")).channel(0);
        ASSERT_GE(rendered.size(), 22050U);
        rendered.resize(22050);
        EXPECT_EQ(samples, rendered) << program;
    }
}

TEST_F(DatasetCommand, ManifestWaitsForEveryPart) {
    const ProgramResult first = zelvatoneWith({"dataset", in("a"), "--count", "4", "--seconds",
                                               "0.05", "--per-shard", "2", "--shard", "2/2"});
    EXPECT_THAT(first.output, HasSubstr("1 shards of other parts are missing"));
    EXPECT_FALSE(fs::exists(folder_ / "a/manifest.json"));
    const ProgramResult second = zelvatoneWith({"dataset", in("a"), "--count", "4", "--seconds",
                                                "0.05", "--per-shard", "2", "--shard", "1/2"});
    EXPECT_THAT(second.output, HasSubstr("manifest.json: 4 sounds"));
    EXPECT_TRUE(fs::exists(folder_ / "a/manifest.json"));
}

TEST_F(DatasetCommand, KilledOneIsFinishedByTheSameCommand) {
    make("whole");
    const auto whole = sums("whole");
    for (const int signal : {SIGINT, SIGKILL}) {
        const std::string name = "cut" + std::to_string(signal);
        Program program({TEST_PROGRAM, "dataset", in(name), "--count", "40", "--seconds", "0.05",
                         "--vary", "Attack=0:0.01", "--seed", "5", "-q", "--per-shard", "14"},
                        folder_);
        const auto latest = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        while (!fs::exists(folder_ / name / "parts/000000.json") &&
               std::chrono::steady_clock::now() < latest) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        kill(program.id(), signal);
        program.wait();
        for (const auto& [file, sum] : sums(name)) {
            EXPECT_TRUE(whole.count(file) == 1 && whole.at(file) == sum) << file;
        }
        make(name);
        EXPECT_EQ(sums(name), whole);
    }
}

TEST_F(DatasetCommand, DamagedShardIsMadeAgainAndNoOther) {
    make("a");
    const auto before = sums("a");
    const auto time = fs::last_write_time(folder_ / "a/shards/000001.tar");
    flipByte("a/shards/000002.tar");
    expectError({"dataset", in("a"), "--verify", "-q"}, "shards/000002.tar is damaged");
    const ProgramResult result = zelvatoneWith(small(in("a")));
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_THAT(result.errors, EndsWith("shards/000002.tar is damaged and made again\n"));
    EXPECT_EQ(sums("a"), before);
    EXPECT_EQ(fs::last_write_time(folder_ / "a/shards/000001.tar"), time);
}

TEST_F(DatasetCommand, VerifyRendersAgain) {
    make("a");
    const ProgramResult result = zelvatoneWith({"dataset", in("a"), "--verify", "--sample", "all"});
    EXPECT_EQ(result.exitStatus, 0) << result.errors;
    EXPECT_THAT(result.output, HasSubstr("3 shards are whole, 40 of 40 sounds"));
    flipByte("a/parameters.csv");
    expectError({"dataset", in("a"), "--verify", "-q"}, "parameters.csv is damaged");
}

// A changed sample with matching checksums, as another sound would give it.
TEST_F(DatasetCommand, VerifyFindsAnotherSound) {
    make("a");
    const std::string before = sha256Of(folder_ / "a/shards/000000.tar");
    flipByte("a/shards/000000.tar");
    const std::string after = sha256Of(folder_ / "a/shards/000000.tar");
    for (const char* file : {"a/manifest.json", "a/parts/000000.json"}) {
        std::string text = readText(folder_ / file);
        text.replace(text.find(before), before.size(), after);
        writeText(folder_ / file, text);
    }
    expectError({"dataset", in("a"), "--verify", "--sample", "all", "-q"},
                "is not what this program renders");
}

TEST_F(DatasetCommand, TableOfADatasetMakesTheSameSounds) {
    make("a");
    const std::string table = in("a") + "/parameters.csv";
    const ProgramResult result =
        zelvatoneWith({"dataset", in("b"), "--parameters", table, "--seconds", "0.05", "--seed",
                       "5", "-q", "--per-shard", "14"});
    EXPECT_EQ(result.exitStatus, 0) << result.errors;
    EXPECT_EQ(sha256Of(in("b") + "/parameters.csv"), sha256Of(table));
    EXPECT_EQ(sums("b").at("shards/000002.tar"), sums("a").at("shards/000002.tar"));
    EXPECT_EQ(zelvatoneWith({"dataset", in("b"), "--verify", "-q"}).errors, "");
}

TEST_F(DatasetCommand, OtherPlanInTheSameFolderIsRefused) {
    make("a");
    const auto before = sums("a");
    Words other = small(in("a"));
    other[9] = "6"; // the seed
    expectError(other, "holds another dataset, with another 'seed'");
    EXPECT_EQ(sums("a"), before);
}

TEST_F(DatasetCommand, FolderWithOtherFilesIsRefused) {
    fs::create_directory(folder_ / "a");
    writeText(folder_ / "a/letter.txt", "Dear");
    expectError(small(in("a")), "there are other files in it");
    EXPECT_EQ(readText(folder_ / "a/letter.txt"), "Dear");
}

TEST_F(DatasetCommand, TableThatLiesInTheFolderStays) {
    fs::create_directory(folder_ / "a");
    writeText(folder_ / "a/table.csv", "note\n50\n");
    writeText(folder_ / "t.csv", "note\n60\n");
    expectError({"dataset", in("a"), "--parameters", in("t.csv")}, "there is another table in it");
    EXPECT_EQ(readText(folder_ / "a/table.csv"), "note\n50\n");
}

// Programs and rates go into arrays and filters.
TEST_F(DatasetCommand, DamagedDescriptionIsToldInALine) {
    make("a");
    const std::string whole = readText(folder_ / "a/dataset.json");
    Json description = Json::parse(whole);
    const std::vector<std::pair<const char*, Json>> damages{
        {"programs", {99}}, {"notes", {300}}, {"velocities", Json::array()}, {"sample_rate", -1},
        {"seconds", 1e300}, {"audio", "mp3"}, {"vary", {{"Attack", {5, 6}}}}};
    for (const auto& [key, value] : damages) {
        Json damaged = description;
        damaged[key] = value;
        writeText(folder_ / "a/dataset.json", damaged.dump());
        expectError({"dataset", in("a"), "--verify", "-q"},
                    "dataset.json is not the description of a dataset");
    }
}

// Parts of one dataset may begin at the same moment.
TEST_F(DatasetCommand, FolderThatAnotherProcessPreparesIsTaken) {
    fs::create_directories(folder_ / "a/shards");
    make("a");
    std::vector<std::unique_ptr<Program>> programs;
    for (const char* part : {"1/3", "2/3", "3/3"}) {
        Words words = small(in("b"), {"--shard", part});
        words.insert(words.begin(), TEST_PROGRAM);
        logs_.push_back(std::make_unique<TemporaryFolder>());
        programs.push_back(std::make_unique<Program>(words, *logs_.back()));
    }
    for (const auto& program : programs) {
        EXPECT_EQ(program->wait().exitStatus, 0);
    }
    EXPECT_EQ(sums("b"), sums("a"));
}

TEST_F(DatasetCommand, BadTableIsToldInALine) {
    writeText(folder_ / "t.csv", "note,Attack\n60,0.5\n61,9\n");
    expectError({"dataset", in("a"), "--parameters", in("t.csv")},
                "t.csv: line 3: Attack is a number from 0.01 to 2, not '9'");
    EXPECT_FALSE(fs::exists(folder_ / "a"));
}

TEST_F(DatasetCommand, BadOptionsAreToldInALine) {
    expectError({"dataset", in("a")}, "needs --count or --parameters", 2);
    expectError({"dataset", in("a"), "--count", "0"}, "--count takes", 2);
    expectError({"dataset", in("a"), "--count", "1", "--seed", "-1"}, "--seed takes", 2);
    expectError({"dataset", in("a"), "--count", "1", "--audio", "mp3"}, "--audio takes", 2);
    expectError({"dataset", in("a"), "--count", "1", "--shard", "2/1"}, "--shard takes", 2);
    expectError({"dataset", in("a"), "--verify"}, "no such file");
    EXPECT_FALSE(fs::exists(folder_ / "a"));
}

// A file may have 40 blocks of 512 bytes: less than a shard.
TEST_F(DatasetCommand, FullDiskLeavesWholeShardsOnly) {
    Words words{in("a")};
    const ProgramResult result = shellWith(
        "trap '' XFSZ; ulimit -f 40; exec \"$0\" dataset \"$1\" --count 40 --seconds 0.05 "
        "--per-shard 14 -q",
        words);
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.errors, HasSubstr("cannot write"));
    EXPECT_FALSE(fs::exists(folder_ / "a/shards/000000.tar"));
    EXPECT_FALSE(fs::exists(folder_ / "a/manifest.json"));
    EXPECT_EQ(fs::exists(folder_ / "a/parts/000000.json"), false);
}

} // namespace
} // namespace zelvatone
