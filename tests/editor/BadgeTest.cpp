// The badge leads to the maker's web page, by way of the desktop's opener.
#include "tests/editor/EditorFixture.h"

#include <fcntl.h>
#include <unistd.h>

#include <cctype>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace zelvatone::test {
namespace {

namespace fs = std::filesystem;

constexpr Point kBadge{646, 15};

std::string contentOf(const fs::path& file) {
    std::ifstream stream(file);
    return {std::istreambuf_iterator<char>(stream), {}};
}

// Children of this process that have ended and whose status was not read.
int countZombies() {
    int zombies = 0;
    for (const auto& entry : fs::directory_iterator("/proc")) {
        if (!std::isdigit(entry.path().filename().string().front())) {
            continue;
        }
        // pid (name) state parent ...
        const std::string stat = contentOf(entry.path() / "stat");
        const auto end = stat.rfind(')');
        if (end != std::string::npos && stat.at(end + 2) == 'Z') {
            zombies += std::stoi(stat.substr(end + 4)) == getpid();
        }
    }
    return zombies;
}

class EditorBadge : public EditorTest {
protected:
    void SetUp() override {
        EditorTest::SetUp();
        if (!IsSkipped()) {
            ASSERT_TRUE(openEditor());
        }
    }
    void TearDown() override {
        setenv("PATH", path.c_str(), 1);
        fs::remove_all(folder);
    }

    // Puts an opener with this script on the path. It runs with $folder set.
    void installOpener(const std::string& script) {
        const fs::path opener = folder / "xdg-open";
        std::ofstream(opener) << "#!/bin/sh\nfolder=" << folder << "\n" << script;
        fs::permissions(opener, fs::perms::owner_all);
        setenv("PATH", (folder.string() + ":" + path).c_str(), 1);
    }
    void click() { window->click(kBadge.x, kBadge.y); }
    bool idleUntilThereIs(const std::string& file) {
        return idleUntil([&] { return fs::exists(folder / file); });
    }

    static fs::path makeFolder() {
        std::string name = fs::temp_directory_path() / "badge.XXXXXX";
        return mkdtemp(name.data());
    }

    const std::string path = std::getenv("PATH");
    const fs::path folder = makeFolder();
};

TEST_F(EditorBadge, OpensTheWebPageOnceAndSaysSo) {
    installOpener("echo \"$# $1\" >> $folder/seen; mv $folder/seen $folder/calls\n");
    testing::internal::CaptureStdout();
    click();
    EXPECT_TRUE(idleUntilThereIs("calls"));
    idleAWhile();
    EXPECT_EQ(contentOf(folder / "calls"), "1 https://quillfeather.example/zelvatone\n");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Mouse up!\n");
    EXPECT_TRUE(plugin->calls.empty());
}

TEST_F(EditorBadge, DoesNothingWhenAnotherButtonIsPressedMeanwhile) {
    installOpener("touch $folder/called\n");
    testing::internal::CaptureStdout();
    window->movePointer(kBadge.x, kBadge.y);
    window->press();
    window->press(3);
    window->release(3);
    window->release();
    idleAWhile();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST_F(EditorBadge, DoesNotLookWhereThePointerIsReleased) {
    installOpener("touch $folder/called\n");
    window->movePointer(kBadge.x, kBadge.y);
    window->press();
    window->movePointer(100, 300);
    window->release();
    EXPECT_TRUE(idleUntilThereIs("called"));
}

TEST_F(EditorBadge, ReachesToItsEdgesAndNoFurther) {
    installOpener("touch $folder/called\n");
    for (const Point& outside : {Point{579, 15}, Point{713, 15}, Point{646, 30}}) {
        window->click(outside.x, outside.y);
        idleAWhile();
        EXPECT_FALSE(fs::exists(folder / "called")) << outside.x << ", " << outside.y;
    }
    for (const Point& inside : {Point{580, 0}, Point{712, 29}}) {
        window->click(inside.x, inside.y);
        EXPECT_TRUE(idleUntilThereIs("called")) << inside.x << ", " << inside.y;
        fs::remove(folder / "called");
    }
}

TEST_F(EditorBadge, DoesNotWaitForTheOpener) {
    // The opener ends only when the test, which goes on, says so.
    installOpener("touch $folder/started\n"
                  "while ! [ -e $folder/go ]; do sleep 0.05; done\n"
                  "touch $folder/ended\n");
    click();
    EXPECT_TRUE(idleUntilThereIs("started"));
    EXPECT_FALSE(fs::exists(folder / "ended"));
    EXPECT_EQ(countZombies(), 0);
    std::ofstream(folder / "go") << "\n";
    EXPECT_TRUE(idleUntilThereIs("ended"));
    idleAWhile();
    EXPECT_EQ(countZombies(), 0);
}

int childSignals = 0;

void countChildSignal(int) {
    ++childSignals;
}

TEST_F(EditorBadge, LeavesTheHostsSignalsAlone) {
    installOpener("touch $folder/called\n");
    struct sigaction own {};
    own.sa_handler = countChildSignal;
    struct sigaction before {};
    sigaction(SIGCHLD, &own, &before);
    click();
    EXPECT_TRUE(idleUntilThereIs("called"));
    struct sigaction after {};
    sigaction(SIGCHLD, &before, &after);
    EXPECT_EQ(after.sa_handler, countChildSignal);
    EXPECT_EQ(countZombies(), 0);
}

TEST_F(EditorBadge, WorksInAHostThatIgnoresItsChildren) {
    installOpener("touch $folder/called\n");
    struct sigaction ignore {};
    ignore.sa_handler = SIG_IGN;
    struct sigaction before {};
    sigaction(SIGCHLD, &ignore, &before);
    click();
    EXPECT_TRUE(idleUntilThereIs("called"));
    sigaction(SIGCHLD, &before, nullptr);
}

TEST_F(EditorBadge, HandsNoFileOfTheHostsOn) {
    installOpener("ls -l /proc/$$/fd > $folder/seen; mv $folder/seen $folder/files\n");
    // Without close-on-exec, as many libraries open theirs; away from the shell's own files.
    const int file = fcntl(STDOUT_FILENO, F_DUPFD, 50);
    const std::string number = " " + std::to_string(file) + " -> ";
    click();
    EXPECT_TRUE(idleUntilThereIs("files"));
    close(file);
    const std::string files = contentOf(folder / "files");
    EXPECT_NE(files.find(" 1 -> "), std::string::npos);
    EXPECT_EQ(files.find(number), std::string::npos) << files;
}

TEST_F(EditorBadge, DoesNothingWithoutAnOpener) {
    setenv("PATH", folder.c_str(), 1);
    click();
    idleAWhile();
    EXPECT_EQ(countZombies(), 0);
    EXPECT_EQ(frameOf(20), 20); // 70%: the editor lives on
}

} // namespace
} // namespace zelvatone::test
