#include "tests/hostile/EditorUser.h"
#include "tests/hostile/Requests.h"
#include "tests/hostile/Storm.h"

#include <array>
#include <memory>

namespace zelvatone::test {

namespace {

constexpr int kSteps = 400;
// Each leaves its engine in memory on purpose.
constexpr int kMostOpenings = 10;

struct Seat {
    std::unique_ptr<Instance> instance;
    std::unique_ptr<EditorUser> user;
};

void open(Seat& seat, Random& random, bool hasDisplay) {
    seat.instance = std::make_unique<Instance>();
    if (hasDisplay && random.oneIn(2)) {
        seat.user = std::make_unique<EditorUser>(*seat.instance);
    }
    if (random.oneIn(2)) { // others render before anything else
        seat.instance->ask(effOpen);
        seat.instance->ask(effMainsChanged, 0, 1);
    }
}

void close(Seat& seat, Random& random) {
    if (random.oneIn(2)) { // the instance goes first, with its window open
        seat.instance = nullptr;
    }
    seat.user = nullptr;
    seat.instance = nullptr;
}

void act(Seat& seat, Random& random) {
    Instance& instance = *seat.instance;
    switch (random.below(8)) {
    case 0:
        setRateAndSize(instance, random);
        break;
    case 1:
        setParameters(instance, random);
        break;
    case 2:
        setPrograms(instance, random);
        break;
    case 3:
        readTexts(instance, random);
        break;
    case 4:
    case 5:
        sendAnyRequest(instance, random);
        break;
    default:
        render(instance, random);
        break;
    }
    if (seat.user != nullptr) {
        seat.user->act(random);
    }
}

} // namespace

void stormInstances(Random& random, bool hasDisplay) {
    Instance bystander; // gets no requests
    std::array<Seat, 4> seats;
    int openings = 0;
    for (int step = 0; step < kSteps; ++step) {
        Seat& seat = seats.at(static_cast<std::size_t>(random.below(4)));
        if (seat.instance == nullptr) {
            if (openings < kMostOpenings) {
                ++openings;
                open(seat, random, hasDisplay);
            }
        } else if (random.oneIn(40)) {
            close(seat, random);
        } else {
            act(seat, random);
        }
    }
    for (Seat& seat : seats) {
        if (seat.instance != nullptr) {
            seat.instance->restore();
            seat.instance->expectToPlayLikeNew(random.below(kProgramCount));
            close(seat, random);
        }
    }
    bystander.restore();
    bystander.expectToPlayLikeNew(random.below(kProgramCount));
}

} // namespace zelvatone::test
