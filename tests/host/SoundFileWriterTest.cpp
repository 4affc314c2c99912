#include "host/audio/SoundFileWriter.h"

#include "host/Error.h"
#include "tests/support/SoundFile.h"
#include "tests/support/TemporaryFolder.h"

#include <sndfile.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

namespace zelvatone {
namespace {

using ::testing::IsEmpty;

std::vector<float> tone(int frames, int channels) {
    std::vector<float> samples;
    for (int i = 0; i < frames; ++i) {
        const auto sample = static_cast<float>(0.5 * std::sin(i * 0.05));
        samples.insert(samples.end(), static_cast<std::size_t>(channels), sample);
    }
    return samples;
}

void writeTone(const std::filesystem::path& path, const SoundFileFormat& format) {
    SoundFileWriter writer(path, format);
    writer.write(tone(5000, format.channels));
    writer.write(tone(77, format.channels));
    writer.commit();
}

struct Kind {
    std::string file;
    SampleKind samples;
    int libraryFormat;
    double largestError; // root of the mean square
};

class SoundFileWriterKinds : public ::testing::TestWithParam<Kind> {};

TEST_P(SoundFileWriterKinds, WritesWhatReadsBackAsTheSameSound) {
    const TemporaryFolder folder;
    const auto path = folder / GetParam().file;
    writeTone(path, {containerOf(path), GetParam().samples, 48000, 2});
    const SoundFile sound = readSoundFile(path);
    EXPECT_EQ(sound.format, GetParam().libraryFormat);
    EXPECT_EQ(sound.sampleRate, 48000);
    EXPECT_EQ(sound.channels, 2);
    ASSERT_EQ(sound.samples.size(), 5077U * 2U);
    double squaredError = 0.0;
    const auto expected = tone(5000, 2);
    for (std::size_t i = 0; i < expected.size(); ++i) {
        squaredError += std::pow(sound.samples[i] - expected[i], 2.0);
    }
    EXPECT_LE(std::sqrt(squaredError / static_cast<double>(expected.size())),
              GetParam().largestError);
}

// Files that differ by a time of day or by a random number cannot be compared.
TEST_P(SoundFileWriterKinds, WritesTheSameBytesForTheSameSound) {
    const TemporaryFolder folder;
    const auto first = folder / ("1" + GetParam().file);
    const auto second = folder / ("2" + GetParam().file);
    const SoundFileFormat format{containerOf(first), GetParam().samples, 44100, 1};
    writeTone(first, format);
    writeTone(second, format);
    EXPECT_TRUE(readText(first) == readText(second));
    // The chunk that carries the time, in whole seconds, which may be the same by chance.
    EXPECT_EQ(readText(first).find("PEAK"), std::string::npos);
}

// Rounding is off by half a step at most.
constexpr double kHalfStep16 = 0.5 / 32768.0;
constexpr double kHalfStep24 = 0.5 / 8388608.0;

INSTANTIATE_TEST_SUITE_P(
    , SoundFileWriterKinds,
    ::testing::Values(
        Kind{"a.wav", SampleKind::kInt16, SF_FORMAT_WAV | SF_FORMAT_PCM_16, kHalfStep16},
        Kind{"a.wav", SampleKind::kInt24, SF_FORMAT_WAV | SF_FORMAT_PCM_24, kHalfStep24},
        Kind{"a.wav", SampleKind::kFloat, SF_FORMAT_WAV | SF_FORMAT_FLOAT, 0.0},
        Kind{"a.flac", SampleKind::kInt16, SF_FORMAT_FLAC | SF_FORMAT_PCM_16, kHalfStep16},
        Kind{"a.FLAC", SampleKind::kInt24, SF_FORMAT_FLAC | SF_FORMAT_PCM_24, kHalfStep24},
        // Lossy: a twentieth of the tone itself, which is 0.35.
        Kind{"a.ogg", SampleKind::kInt24, SF_FORMAT_OGG | SF_FORMAT_VORBIS, 0.0175}));

TEST(SoundFileWriter, ReadsBackAWholeOggStreamWithItsChecksums) {
    const TemporaryFolder folder;
    const auto path = folder / "long.ogg";
    SoundFileWriter writer(path, {Container::kOgg, SampleKind::kInt24, 44100, 1});
    for (int i = 0; i < 100; ++i) { // several pages
        writer.write(tone(4410, 1));
    }
    writer.commit();
    EXPECT_EQ(readSoundFile(path).samples.size(), 441000U);
}

TEST(SoundFileWriter, LeavesNoFileWithoutACommit) {
    for (const char* name : {"a.wav", "a.flac", "a.ogg"}) {
        const TemporaryFolder folder;
        {
            SoundFileWriter writer(folder / name,
                                   {containerOf(name), SampleKind::kInt24, 44100, 2});
            writer.write(tone(10000, 2));
        }
        EXPECT_THAT(folder.names(), IsEmpty()) << name;
    }
}

TEST(SoundFileWriter, CountsClippedSamplesOfWholeNumbersOnly) {
    const TemporaryFolder folder;
    const std::vector<float> loud{1.5F, -1.5F, 0.5F, 0.5F};
    SoundFileWriter whole(folder / "a.wav", {Container::kWav, SampleKind::kInt16, 44100, 2});
    whole.write(loud);
    EXPECT_EQ(whole.clippedSamples(), 2);
    SoundFileWriter real(folder / "b.wav", {Container::kWav, SampleKind::kFloat, 44100, 2});
    real.write(loud);
    real.commit();
    EXPECT_EQ(real.clippedSamples(), 0);
    EXPECT_EQ(readSoundFile(folder / "b.wav").samples, loud);
}

TEST(SoundFileWriter, CountsClippedSamplesOfOggAsOfWholeNumbers) {
    const TemporaryFolder folder;
    SoundFileWriter ogg(folder / "a.ogg", {Container::kOgg, SampleKind::kFloat, 44100, 2});
    ogg.write(std::vector<float>{1.5F, -1.5F, 0.5F, -1.0F});
    EXPECT_EQ(ogg.clippedSamples(), 2);
}

TEST(SoundFileWriter, RefusesWhatFlacCannotHold) {
    const TemporaryFolder folder;
    EXPECT_THROW(
        SoundFileWriter(folder / "a.flac", {Container::kFlac, SampleKind::kFloat, 44100, 2}),
        UsageError);
    EXPECT_THAT(folder.names(), IsEmpty());
}

TEST(SoundFileWriter, RefusesAWavFileOfMoreThanFourGigabytes) {
    const TemporaryFolder folder;
    constexpr std::int64_t fourGigabytes = std::int64_t{1} << 32;
    SoundFileWriter wav(folder / "a.wav", {Container::kWav, SampleKind::kInt16, 44100, 2});
    EXPECT_NO_THROW(wav.require(fourGigabytes / 4 - 1024));
    EXPECT_THROW(wav.require(fourGigabytes / 4), InputError);
    SoundFileWriter flac(folder / "a.flac", {Container::kFlac, SampleKind::kInt16, 44100, 2});
    EXPECT_NO_THROW(flac.require(fourGigabytes));
}

TEST(SoundFileFormat, TellsTheContainerByTheEndOfTheName) {
    EXPECT_EQ(containerOf("x.WAV"), Container::kWav);
    EXPECT_EQ(containerOf("dir.wav/x.Ogg"), Container::kOgg);
    EXPECT_THROW(containerOf("x.mp3"), UsageError);
    EXPECT_THROW(containerOf("wav"), UsageError);
    EXPECT_THROW(containerOf(""), UsageError);
}

} // namespace
} // namespace zelvatone
