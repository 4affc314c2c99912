// Random input to the editor.
#pragma once

#include "tests/hostile/Instance.h"
#include "tests/kernel/Random.h"
#include "tests/vstgui/HostWindow.h"

#include <memory>

namespace zelvatone::test {

// On the display that the environment names, which is the test's own. User-interface thread.
class EditorUser {
public:
    explicit EditorUser(const Instance& instance);
    ~EditorUser(); // lets go of all buttons and keys
    EditorUser(const EditorUser&) = delete;
    EditorUser& operator=(const EditorUser&) = delete;

    // Opens, closes, uses the editor or takes its window away, whether it is open or not.
    void act(Random& random);

private:
    void useMouseAndKeys(Random& random);
    void useKeysOfTheHost(Random& random) const;
    void changeWindow(Random& random);

    const Instance& instance_;
    std::unique_ptr<VSTGUI::test::HostWindow> window_;
};

} // namespace zelvatone::test
