#include "tests/hostile/EditorUser.h"
#include "tests/hostile/Requests.h"
#include "tests/hostile/Storm.h"

#include <memory>
#include <thread>

namespace zelvatone::test {

namespace {

constexpr int kSteps = 150; // of each thread

void automate(const Instance& instance, std::uint32_t seed) {
    Random random(seed);
    for (int step = 0; step < kSteps; ++step) {
        setParameters(instance, random);
        readTexts(instance, random);
    }
}

void play(Instance& instance, std::uint32_t seed) {
    Random random(seed);
    for (int step = 0; step < kSteps; ++step) {
        render(instance, random);
    }
}

} // namespace

void stormThreads(Random& random, bool hasDisplay) {
    Instance instance;
    instance.ask(effMainsChanged, 0, 1);
    std::unique_ptr<EditorUser> user;
    if (hasDisplay) {
        user = std::make_unique<EditorUser>(instance);
    }
    std::thread audio(play, std::ref(instance), random.word());
    std::thread automation(automate, std::cref(instance), random.word());
    for (int step = 0; step < kSteps; ++step) {
        setPrograms(instance, random);
        readTexts(instance, random);
        if (user != nullptr) {
            user->act(random);
        }
    }
    audio.join();
    automation.join();
    instance.ask(effEditClose);
    user = nullptr;
    instance.restore();
    instance.expectToPlayLikeNew(random.below(kProgramCount));
}

} // namespace zelvatone::test
