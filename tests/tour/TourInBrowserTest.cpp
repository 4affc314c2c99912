// The tour as a browser shows it, opened from its folder without a server.

#include "tests/support/Program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>

namespace zelvatone {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

// Runs in the page when everything has loaded, and writes down what came of it.
constexpr const char* kReport = R"(<script>
addEventListener("load", () => {
    const report = document.createElement("pre");
    report.id = "report";
    for (const audio of document.querySelectorAll("audio"))
        report.textContent += `player ${audio.duration} ${audio.error ? audio.error.message : "ok"}\n`;
    for (const image of document.images)
        report.textContent += `picture ${image.naturalWidth} x ${image.naturalHeight}\n`;
    document.body.append(report);
});
</script>)";

bool hasBrowser() {
    return shellWith("command -v chromium", {}).exitStatus == 0;
}

// The page's document after loading.
std::string shownBy(const std::filesystem::path& page) {
    const TemporaryFolder profile;
    // No sandbox: it refuses to start for root, as whom tests run in containers.
    const auto result = shellWith(
        "exec chromium --headless --no-sandbox --disable-gpu --disable-quic --no-first-run "
        "--disable-background-networking --disable-component-update --disable-sync "
        "--user-data-dir=\"$1\" --dump-dom \"file://$2\"",
        {profile.path().string(), page.string()});
    EXPECT_EQ(result.exitStatus, 0) << result.errors;
    return result.output;
}

// How many lines begin and end like that.
long linesOf(const std::string& text, const std::string& begin, const std::string& end) {
    long count = 0;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        count += line.starts_with(begin) && line.ends_with(end) ? 1 : 0;
    }
    return count;
}

long countOf(const std::string& text, const std::string& word) {
    long count = 0;
    for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, at + 1)) {
        ++count;
    }
    return count;
}

TEST(TourInBrowser, HasAPlayerWithADurationAndPicturesForEachProgram) {
    if (!hasBrowser()) {
        GTEST_SKIP() << "chromium is not installed";
    }
    const TemporaryFolder folder;
    const auto tour = zelvatoneWith({"tour", "-o", (folder / "tour").string()});
    ASSERT_EQ(tour.exitStatus, 0) << tour.errors;
    const std::filesystem::path page = folder / "tour" / "index.html";
    writeText(page, readText(page) + kReport);
    const std::string shown = shownBy(page);
    const std::size_t at = shown.find("<pre id=\"report\">");
    ASSERT_NE(at, std::string::npos) << shown.substr(0, 1000);
    // The first line follows the element's own mark.
    const std::string report = shown.substr(shown.find('>', at) + 1);
    // The phrase lasts six seconds.
    EXPECT_EQ(linesOf(report, "player 6.0", " ok"), 42) << report;
    EXPECT_EQ(linesOf(report, "picture 960 x 320", ""), 42) << report;
    EXPECT_EQ(linesOf(report, "picture 960 x 96", ""), 42) << report;
    EXPECT_EQ(linesOf(report, "player", "") + linesOf(report, "picture", ""), 3 * 42);
    EXPECT_EQ(countOf(shown, "<article"), 42);
}

} // namespace
} // namespace zelvatone
