// WAV files of our own making, as the writing library reads and writes them.
#include "host/audio/WavEncoder.h"

#include "host/files/OutputFile.h"
#include "tests/support/SoundFile.h"
#include "tests/support/TemporaryFolder.h"

#include <sndfile.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <iterator>

namespace zelvatone {
namespace {

using ::testing::ElementsAre;

struct WavKind {
    SampleKind samples;
    int libraryFormat;
};

class WavEncoderKinds : public ::testing::TestWithParam<WavKind> {
protected:
    // Three frames of one channel: with 24 bits, an odd number of bytes.
    void write(const std::filesystem::path& path) const {
        OutputFile file(path);
        WavEncoder encoder(file, {Container::kWav, GetParam().samples, 48000, 1});
        if (GetParam().samples == SampleKind::kFloat) {
            encoder.write(std::vector<float>{0.5F, -1.5F});
            encoder.write(std::vector<float>{1e-30F});
        } else {
            // Full scale has 31 bits here.
            encoder.write(std::vector<std::int32_t>{1 << 30, INT32_MIN});
            encoder.write(std::vector<std::int32_t>{-(1 << 16)});
        }
        encoder.finish();
        file.commit();
    }
};

TEST_P(WavEncoderKinds, SamplesReadBackAsTheyWereWritten) {
    const TemporaryFolder folder;
    write(folder / "own.wav");
    const SoundFile sound = readSoundFile(folder / "own.wav");
    EXPECT_EQ(sound.format, GetParam().libraryFormat);
    EXPECT_EQ(sound.sampleRate, 48000);
    EXPECT_EQ(sound.channels, 1);
    const std::vector<float> expected = GetParam().samples == SampleKind::kFloat
                                            ? std::vector<float>{0.5F, -1.5F, 1e-30F}
                                            : std::vector<float>{0.5F, -1.0F, -1.0F / 32768.0F};
    EXPECT_EQ(sound.samples, expected);
}

// RIFF counts what follows its own eight bytes, and pads to an even number.
TEST_P(WavEncoderKinds, HeaderCountsTheBytesOfTheFile) {
    const TemporaryFolder folder;
    write(folder / "own.wav");
    std::ifstream stream(folder / "own.wav", std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    std::uint32_t counted = 0;
    std::memcpy(&counted, bytes.data() + 4, sizeof counted);
    EXPECT_EQ(counted, bytes.size() - 8);
    EXPECT_EQ(bytes.size() % 2, 0U);
}

// Chunks: a name of four letters, a size of four bytes, the content.
std::vector<std::string> chunksOf(const std::string& file) {
    std::vector<std::string> chunks;
    for (std::size_t at = std::strlen("RIFFsizeWAVE"); at + 8 <= file.size();) {
        std::uint32_t size = 0;
        std::memcpy(&size, file.data() + at + 4, sizeof size);
        chunks.push_back(file.substr(at, 4) + std::to_string(size));
        at += 8 + size + size % 2;
    }
    return chunks;
}

TEST(WavEncoder, FloatFileCountsItsFramesAndTellsNoTimeOfDay) {
    const TemporaryFolder folder;
    OutputFile file(folder / "own.wav");
    WavEncoder encoder(file, {Container::kWav, SampleKind::kFloat, 44100, 2});
    encoder.write(std::vector<float>(6, 0.5F));
    encoder.finish();
    file.commit();
    EXPECT_THAT(chunksOf(readText(folder / "own.wav")),
                ElementsAre("fmt 16", "fact4", "PAD 24", "data24"));
}

TEST(WavEncoder, FileOfWholeNumbersHoldsItsFormatAndItsDataAlone) {
    const TemporaryFolder folder;
    OutputFile file(folder / "own.wav");
    WavEncoder encoder(file, {Container::kWav, SampleKind::kInt16, 44100, 2});
    encoder.write(std::vector<std::int32_t>(6));
    encoder.finish();
    file.commit();
    EXPECT_THAT(chunksOf(readText(folder / "own.wav")), ElementsAre("fmt 16", "data12"));
}

INSTANTIATE_TEST_SUITE_P(
    All, WavEncoderKinds,
    ::testing::Values(WavKind{SampleKind::kInt16, SF_FORMAT_WAV | SF_FORMAT_PCM_16},
                      WavKind{SampleKind::kInt24, SF_FORMAT_WAV | SF_FORMAT_PCM_24},
                      WavKind{SampleKind::kFloat, SF_FORMAT_WAV | SF_FORMAT_FLOAT}),
    [](const auto& kind) { return "Kind" + std::to_string(static_cast<int>(kind.param.samples)); });

} // namespace
} // namespace zelvatone
