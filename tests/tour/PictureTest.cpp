#include "host/picture/Picture.h"

#include "host/Error.h"
#include "tests/support/TemporaryFolder.h"
#include "tour/LevelColours.h"
#include "tour/Spectrogram.h"
#include "tour/Waveform.h"

#include <png.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace zelvatone {
namespace {

constexpr double kRate = 44100.0;
constexpr int kWidth = 100;
constexpr int kHeight = 200;

std::vector<float> sine(double hz, double level, std::size_t frames = 44100) {
    std::vector<float> samples(frames);
    for (std::size_t i = 0; i < frames; ++i) {
        const double turns = hz * static_cast<double>(i) / kRate;
        samples[i] = static_cast<float>(level * std::sin(2.0 * std::numbers::pi * turns));
    }
    return samples;
}

int pixel(const Picture& picture, int x, int y) {
    return picture.pixels.at(static_cast<std::size_t>(y * picture.width + x));
}

// The row from the top that is loudest in a column.
int loudestRow(const Picture& picture, int x) {
    int loudest = 0;
    for (int y = 1; y < picture.height; ++y) {
        loudest = pixel(picture, x, y) > pixel(picture, x, loudest) ? y : loudest;
    }
    return loudest;
}

TEST(Picture, IsReadBackFromItsFile) {
    const TemporaryFolder folder;
    const Picture picture{
        3, 2, {0, 1, 2, 2, 1, 0}, {{255, 0, 0, 255}, {0, 255, 0, 128}, {0, 0, 255, 0}}};
    writePng(folder / "a.png", picture);
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    ASSERT_NE(png_image_begin_read_from_file(&image, (folder / "a.png").c_str()), 0);
    EXPECT_EQ(image.width, 3U);
    EXPECT_EQ(image.height, 2U);
    image.format = PNG_FORMAT_RGBA;
    std::vector<Colour> read(6);
    ASSERT_NE(png_image_finish_read(&image, nullptr, read.data(), 0, nullptr), 0);
    for (std::size_t i = 0; i < read.size(); ++i) {
        EXPECT_EQ(read[i], picture.colours[picture.pixels[i]]) << i;
    }
}

TEST(Picture, LeavesNoFileWhenItCannotBeWritten) {
    const TemporaryFolder folder;
    EXPECT_THROW(writePng(folder / "no" / "a.png", {1, 1, {0}, {{0, 0, 0, 0}}}), InputError);
}

TEST(LevelColours, GetLighterByEqualSteps) {
    const auto colours = levelColours();
    ASSERT_EQ(colours.size(), 256U);
    EXPECT_LT(lightnessOf(colours[0]), 0.15);
    EXPECT_GT(lightnessOf(colours[255]), 0.9);
    const double step = (lightnessOf(colours[255]) - lightnessOf(colours[0])) / 255.0;
    for (std::size_t i = 16; i < colours.size(); ++i) {
        // Whole numbers of red, green and blue allow no better than this.
        EXPECT_NEAR(lightnessOf(colours[i]) - lightnessOf(colours[i - 16]), 16.0 * step, step) << i;
    }
}

// The published example of the space: white is 1, and pure sRGB red has the lightness 0.628.
TEST(LevelColours, MeasureLightnessAsTheSpaceDefinesIt) {
    EXPECT_NEAR(lightnessOf({255, 255, 255, 255}), 1.0, 1e-4);
    EXPECT_NEAR(lightnessOf({0, 0, 0, 255}), 0.0, 1e-9);
    EXPECT_NEAR(lightnessOf({255, 0, 0, 255}), 0.62796, 1e-4);
}

TEST(Spectrogram, ShowsASineAtItsHeight) {
    const Spectrogram spectrogram(kRate);
    for (const double hz : {200.0, 440.0, 1000.0, 8000.0}) {
        const Picture picture = spectrogram.draw(sine(hz, 0.1), kWidth, kHeight);
        // Octaves above 30 Hz of those up to 18 kHz.
        const double height = std::log2(hz / 30.0) / std::log2(18000.0 / 30.0);
        const double row = (1.0 - height) * kHeight;
        EXPECT_NEAR(loudestRow(picture, kWidth / 2), row, 2.0) << hz;
    }
}

TEST(Spectrogram, ShowsALevelByItsColour) {
    const Spectrogram spectrogram(kRate);
    const double hz = 64.0 * kRate / 4096.0; // in the middle of one of the transform's steps
    for (const double decibels : {-12.0, -48.0, -84.0}) {
        const Picture picture =
            spectrogram.draw(sine(hz, std::pow(10.0, decibels / 20.0)), kWidth, kHeight);
        const double index = (decibels + 90.0) / 84.0 * 255.0;
        EXPECT_NEAR(pixel(picture, 50, loudestRow(picture, 50)), index, 3.0) << decibels;
    }
}

TEST(Spectrogram, ShowsSilenceAndWhenASoundBegins) {
    const Spectrogram spectrogram(kRate);
    std::vector<float> samples(22050, 0.0F);
    const auto sound = sine(1000.0, 0.5, 22050);
    samples.insert(samples.end(), sound.begin(), sound.end());
    const Picture picture = spectrogram.draw(samples, kWidth, kHeight);
    const int row = loudestRow(picture, 90);
    EXPECT_EQ(pixel(picture, 30, row), 0);
    EXPECT_GT(pixel(picture, 90, row), 200);
}

double opacityAt(const Picture& picture, int x, int y) {
    return picture.colours[static_cast<std::size_t>(pixel(picture, x, y))][3] / 255.0;
}

TEST(Waveform, ReachesAsFarAsTheSamples) {
    // The first half from -0.5 to 1, the second silent.
    std::vector<float> samples(1000, 0.0F);
    for (std::size_t i = 0; i < 500; ++i) {
        samples[i] = i % 2 == 0 ? 1.0F : -0.5F;
    }
    const Picture picture = drawWaveform(samples, 10, 100);
    EXPECT_GT(opacityAt(picture, 2, 0), 0.4);  // the top
    EXPECT_GT(opacityAt(picture, 2, 74), 0.4); // a half below the middle
    EXPECT_EQ(opacityAt(picture, 2, 75), 0.0);
    EXPECT_EQ(opacityAt(picture, 7, 40), 0.0);
    EXPECT_GT(opacityAt(picture, 7, 49) + opacityAt(picture, 7, 50), 0.9); // a line all the same
}

TEST(Waveform, IsSolidUpToTheMeanPower) {
    const Picture picture = drawWaveform(sine(441.0, 1.0), 10, 1000);
    // A sine's root mean square is 0.7071 of its peak.
    EXPECT_EQ(opacityAt(picture, 5, 500 - 350), 1.0) << "inside";
    EXPECT_NEAR(opacityAt(picture, 5, 500 - 360), 0.45, 0.02) << "outside";
}

} // namespace
} // namespace zelvatone
