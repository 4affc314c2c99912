#include "dataset/Fingerprint.h"

#include "dataset/LabelledSound.h"
#include "dataset/Sha256.h"
#include "formats/Instrument.h"

namespace zelvatone {

namespace {

constexpr std::size_t kEncoded = 4; // programs: simple and dense sounds are among them
constexpr std::size_t kDigits = 16; // no two versions will meet in 64 bits by chance

std::span<const char> bytesOf(const std::vector<float>& samples) {
    return {reinterpret_cast<const char*>(samples.data()), samples.size() * sizeof(float)};
}

} // namespace

Fingerprint fingerprintOf(bool isFlac) {
    DatasetPlan plan;
    plan.seconds = 0.05; // the start, a glide and the release
    plan.holdSeconds = 0.04;
    plan.isFlac = isFlac;
    plan.notes = {60};
    plan.velocities = {100};
    Sha256 sound;
    Sha256 encoder;
    for (std::size_t program = 0; program < factoryBank().size(); ++program) {
        plan.programs = {static_cast<int>(program)};
        sound.add(bytesOf(renderSound(plan, recipeOf(plan, 0))));
        if (program < kEncoded) {
            encoder.add(makeSound(plan, 0).file);
        }
    }
    return {sound.take().substr(0, kDigits), encoder.take().substr(0, kDigits)};
}

} // namespace zelvatone
