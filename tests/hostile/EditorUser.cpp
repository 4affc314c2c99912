#include "tests/hostile/EditorUser.h"

#include "tests/hostile/OddValues.h"
#include "tests/hostile/Promise.h"

namespace zelvatone::test {

namespace {

using VSTGUI::test::Host;
using VSTGUI::test::HostWindow;

constexpr int kButtons = 7;

} // namespace

EditorUser::EditorUser(const Instance& instance)
    : instance_(instance), window_(std::make_unique<HostWindow>()) {}

EditorUser::~EditorUser() {
    for (int button = 1; button <= kButtons; ++button) {
        window_->release(button);
    }
    window_->holdShift(false);
    window_->holdControl(false);
    window_->holdAlt(false);
}

void EditorUser::act(Random& random) {
    switch (random.below(8)) {
    case 0: {
        ERect* size = nullptr;
        instance_.ask(effEditGetRect, 0, 0, static_cast<void*>(&size));
        expectPromise(size != nullptr, "the editor has a size at any time");
        instance_.ask(effEditOpen, 0, 0, window_->handle());
        break;
    }
    case 1:
        if (random.oneIn(3)) {
            instance_.ask(effEditClose);
        }
        break;
    case 2:
        useKeysOfTheHost(random);
        break;
    case 3:
        if (random.oneIn(10)) {
            changeWindow(random);
        }
        break;
    default:
        useMouseAndKeys(random);
        break;
    }
    instance_.ask(effEditIdle);
}

void EditorUser::useMouseAndKeys(Random& random) {
    window_->movePointer(random.between(-20, 740), random.between(-20, 500));
    switch (random.below(7)) {
    case 0:
        window_->press(random.between(1, kButtons));
        break;
    case 1:
        window_->release(random.between(1, kButtons));
        break;
    case 2:
        window_->holdShift(random.oneIn(2));
        break;
    case 3:
        window_->holdControl(random.oneIn(2));
        break;
    case 4:
        window_->typeKey();
        break;
    default:
        break;
    }
}

void EditorUser::useKeysOfTheHost(Random& random) const {
    instance_.ask(random.oneIn(2) ? effEditKeyDown : effEditKeyUp, random.below(300),
                  oddNumber(random), nullptr, oddParameter(random));
    instance_.ask(effSetEditKnobMode, 0, oddNumber(random));
}

void EditorUser::changeWindow(Random& random) {
    switch (random.below(4)) {
    case 0:
        window_->hide();
        break;
    case 1:
        window_->show();
        break;
    case 2:
        window_->destroyChildren();
        break;
    default:
        window_ = std::make_unique<HostWindow>(random.oneIn(2) ? Host::kPlain : Host::kTranslucent);
        break;
    }
}

} // namespace zelvatone::test
