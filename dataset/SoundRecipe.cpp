#include "dataset/SoundRecipe.h"

#include "dataset/Philox.h"
#include "formats/Instrument.h"
#include "formats/ParameterUnits.h"
#include "params/CheckedAccess.h"

namespace zelvatone {

namespace {

// The words of a sound, each with one meaning for ever: a parameter that is varied or not changes
// no other draw.
enum Word : std::uint32_t { kSplitWord, kProgramWord, kNoteWord, kVelocityWord, kFirstValueWord };

constexpr std::uint64_t kTestsInHundred = 10;

// The random words of one sound.
class Draws {
public:
    Draws(std::uint64_t seed, std::int64_t number)
        : key_{low(seed), high(seed)}, number_(static_cast<std::uint64_t>(number)) {}

    // A whole number from 0 to `count` - 1.
    std::uint64_t choice(std::uint32_t word, std::uint64_t count) {
        return (static_cast<std::uint64_t>(at(word)) * count) >> 32U;
    }
    int oneOf(std::uint32_t word, const std::vector<int>& numbers) {
        return numbers[choice(word, numbers.size())];
    }
    // From 0 to just below 1.
    double share(std::uint32_t word) { return static_cast<double>(at(word)) * 0x1p-32; }

private:
    static std::uint32_t low(std::uint64_t number) { return static_cast<std::uint32_t>(number); }
    static std::uint32_t high(std::uint64_t number) {
        return static_cast<std::uint32_t>(number >> 32U);
    }
    std::uint32_t at(std::uint32_t word) {
        const std::uint32_t block = word / 4;
        if (block != blockNumber_) {
            blockNumber_ = block;
            block_ = philox({low(number_), high(number_), block, 0}, key_);
        }
        return block_[word % 4];
    }

    PhiloxKey key_;
    std::uint64_t number_;
    std::uint32_t blockNumber_ = 0xFFFFFFFF; // none yet
    PhiloxBlock block_{};
};

float valueIn(Draws& draws, const ValueRange& range) {
    const std::uint32_t word = kFirstValueWord + static_cast<std::uint32_t>(range.parameter);
    const ParameterUnits& parameter = parameterUnits()[range.parameter];
    const auto low = static_cast<double>(range.low);
    const auto high = static_cast<double>(range.high);
    if (parameter.isWhole) {
        const auto count = static_cast<std::uint64_t>(high - low) + 1;
        return static_cast<float>(low + static_cast<double>(draws.choice(word, count)));
    }
    return static_cast<float>(low + draws.share(word) * (high - low));
}

void applyRow(SoundRecipe& recipe, const SoundRow& row) {
    recipe.program = row.program.value_or(recipe.program);
    recipe.note = row.note.value_or(recipe.note);
    recipe.velocity = row.velocity.value_or(recipe.velocity);
}

} // namespace

SoundRecipe recipeOf(const DatasetPlan& plan, std::int64_t number) {
    Draws draws(plan.seed, number);
    SoundRecipe recipe;
    recipe.number = number;
    recipe.isForTests = draws.choice(kSplitWord, 100) < kTestsInHundred;
    recipe.program = draws.oneOf(kProgramWord, plan.programs);
    recipe.note = draws.oneOf(kNoteWord, plan.notes);
    recipe.velocity = draws.oneOf(kVelocityWord, plan.velocities);
    const SoundRow row = plan.table.isEmpty() ? SoundRow() : plan.table.row(number);
    applyRow(recipe, row);
    const SynthProgram& program = checkedAt(factoryBank(), recipe.program);
    for (std::int32_t i = 0; i < kParameterCount; ++i) {
        checkedAt(recipe.values, i) = checkedAt(program.parameters, i)->value;
    }
    for (const ValueRange& range : plan.ranges) {
        checkedAt(recipe.values, range.parameter) = valueIn(draws, range);
    }
    for (const auto& [parameter, value] : row.values) {
        checkedAt(recipe.values, parameter) = value;
    }
    return recipe;
}

} // namespace zelvatone
