// The tour of all programs as a browser shows it, opened from its folder without a server.

#include "tests/support/Program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>

namespace zelvatone {
namespace {

using ::testing::HasSubstr;

// Runs in the page when everything has loaded: `check` writes down what `body` finds.
constexpr const char* kReport = R"js(<script>
addEventListener("load", async () => {
    const report = document.createElement("pre");
    report.id = "report";
    const check = (name, found) => { report.textContent += `${name}: ${found}\n`; };
    const press = (key, target = document.activeElement) =>
        target.dispatchEvent(new KeyboardEvent("keydown", { key, bubbles: true, cancelable: true }));
    // Timers run in virtual time, sounds load in real time: reading a picture takes some of that.
    const until = async isSo => {
        for (let i = 0; i < 2000 && !isSo(); ++i) {
            await new Promise(done => setTimeout(done, 10));
            await new Promise(done => {
                const picture = new Image();
                picture.onload = picture.onerror = done;
                picture.src = `${document.querySelector(".wave").src}?${i}`;
            });
        }
    };
    const names = list => list.map(stop => stop.dataset.name).join(", ");
    try {
        {{body}}
    } catch (error) {
        check("error", error.stack);
    }
    document.body.append(report);
    document.title = "done";
});
</script>)js";

bool hasBrowser() {
    return shellWith("command -v chromium", {}).exitStatus == 0;
}

class TourInBrowser : public ::testing::Test {
protected:
    void SetUp() override {
        if (!hasBrowser()) {
            GTEST_SKIP() << "chromium is not installed";
        }
    }

    // What `body` checks in a window of this width, a line each.
    std::string reportOf(const std::string& body, int width = 1280) const {
        const std::filesystem::path page = copyWith(body);
        // No sandbox: it refuses to start for root, as whom tests run in containers. Virtual time
        // passes as fast as the page lets it, and ends when it has nothing to do.
        const auto result = shellWith(
            "exec chromium --headless --no-sandbox --disable-gpu --disable-quic --no-first-run "
            "--disable-background-networking --disable-component-update --disable-sync "
            "--autoplay-policy=no-user-gesture-required --virtual-time-budget=60000 "
            "--window-size=\"$3\",900 --user-data-dir=\"$1\" --dump-dom \"file://$2\"",
            {profile_.path().string(), page.string(), std::to_string(width)});
        EXPECT_EQ(result.exitStatus, 0) << result.errors;
        const std::size_t at = result.output.find("<pre id=\"report\">");
        const std::size_t end = result.output.find("</pre>", at);
        if (end == std::string::npos) {
            return "no report: " + result.output.substr(0, 500);
        }
        return result.output.substr(at + 17, end - at - 17);
    }

private:
    // A page that reports, beside links to the tour's files.
    std::filesystem::path copyWith(const std::string& body) const {
        for (const auto& entry : std::filesystem::directory_iterator(TEST_TOUR_OF_ALL)) {
            const auto link = folder_ / entry.path().filename().string();
            if (entry.path().filename() != "index.html" && !std::filesystem::exists(link)) {
                std::filesystem::create_symlink(entry.path(), link);
            }
        }
        std::string report = kReport;
        report.replace(report.find("{{body}}"), 8, body);
        const auto page = folder_ / "index.html";
        writeText(page, readText(std::filesystem::path(TEST_TOUR_OF_ALL) / "index.html") + report);
        return page;
    }

    const TemporaryFolder folder_;
    const TemporaryFolder profile_;
};

// The browser fetches pictures that are far below the window when they are needed, and sounds when
// they are played.
TEST_F(TourInBrowser, ShowsAllProgramsAndLeavesLoadingForLater) {
    const std::string report = reportOf(R"js(
        check("programs", stops.length);
        check("index", document.querySelectorAll("nav li").length);
        const pictures = [...document.images];
        check("lazy", pictures.filter(picture => picture.loading === "lazy").length);
        for (const picture of pictures) picture.loading = "eager";
        await until(() => pictures.every(picture => picture.naturalWidth));
        check("spectrograms", pictures.filter(p => p.naturalWidth === 960 && p.naturalHeight === 320).length);
        check("waveforms", pictures.filter(p => p.naturalWidth === 960 && p.naturalHeight === 96).length);
        const audio = audioOf(stops[41]);
        check("loaded at first", audio.readyState);
        audio.preload = "metadata";
        await until(() => audio.readyState > 0);
        check("seconds", Math.round(audio.duration * 100) / 100);
        check("source", audio.currentSrc.split("/").pop());
        const flac = new Audio(stops[41].querySelectorAll("source")[1].src);
        await until(() => flac.readyState > 0);
        check("flac", Math.round(flac.duration * 100) / 100);
    )js");
    EXPECT_EQ(report, "programs: 42\nindex: 42\nlazy: 84\nspectrograms: 42\n"
                      "waveforms: 42\nloaded at first: 0\nseconds: 6\n"
                      "source: 41-Turbo-Space-Organ.ogg\nflac: 6\n");
}

TEST_F(TourInBrowser, IsPlayedWithTheKeyboardAlone) {
    const std::string report = reportOf(R"js(
        press("ArrowDown"); press("ArrowDown"); press("ArrowUp"); press("ArrowDown");
        check("chosen", names([chosen]));
        check("focus", document.activeElement === chosen);
        check("in the index", lineOf.get(chosen).getAttribute("aria-current"));
        press("ArrowRight"); press("ArrowRight"); press("ArrowLeft");
        check("place", audioOf(chosen).currentTime);
        press(" ");
        await until(() => chosen.classList.contains("plays"));
        check("plays", !audioOf(chosen).paused);
        check("button", chosen.querySelector(".play").textContent);
        press("ArrowDown");
        press(" ");
        await until(() => audioOf(stops[1]).paused);
        check("playing", names(stops.filter(stop => !audioOf(stop).paused)));
        press(" ");
        check("paused", stops.every(stop => audioOf(stop).paused));
        press("/");
        check("finds", document.activeElement === find);
        press(" "); press("ArrowLeft");
        check("types", document.activeElement === find && stops.every(stop => audioOf(stop).paused));
        find.value = "organ"; find.dispatchEvent(new Event("input"));
        press("ArrowDown");
        check("from the field", names([chosen]));
        press("ArrowDown"); press("ArrowDown");
        check("at the end", names([chosen]));
        chosen.querySelector(".copy").focus();
        press(" ");
        check("buttons keep their key", audioOf(chosen).paused);
        find.focus();
        press("Escape");
        check("shown", shown().length);
        const reached = [...chosen.querySelectorAll("button, a, summary")].filter(e => e.tabIndex === 0);
        check("in reach of Tab", reached.map(e => e.className || e.localName).join(" "));
    )js");
    EXPECT_EQ(report, "chosen: Banana Bass\nfocus: true\nin the index: true\nplace: 0.5\n"
                      "plays: true\nbutton: Pause\nplaying: Banana Kombat\npaused: true\n"
                      "finds: true\ntypes: true\nfrom the field: Organ\n"
                      "at the end: Turbo Space Organ\nbuttons keep their key: true\nshown: 42\n"
                      "in reach of Tab: star scripted play scripted copy scripted a summary\n");
}

TEST_F(TourInBrowser, FindsProgramsByNameAndByCharacter) {
    const std::string report = reportOf(R"js(
        const type = text => { find.value = text; find.dispatchEvent(new Event("input")); };
        type("bass");
        check("by name and tag", shown().every(stop => /bass/i.test(stop.dataset.name + stop.dataset.tags)));
        check("Robobass", names(shown()).includes("Robobass"));
        check("Snoring", names(shown()).includes("Snoring"));
        type("bell hollow");
        check("both words", names(shown()));
        check("index", [...document.querySelectorAll("nav li:not([hidden])")].length);
        type("");
        const plucked = document.querySelector("[data-tag=plucked]");
        plucked.click();
        check("plucked", shown().length === Number(plucked.querySelector("span").textContent));
        document.querySelector("[data-tag=bright]").click();
        check("plucked and bright", names(shown()));
        check("count", document.getElementById("found").value);
        type("no such name");
        check("none", !document.getElementById("none").hidden);
        document.getElementById("all").click();
        check("all", shown().length);
    )js");
    EXPECT_EQ(report,
              "by name and tag: true\nRobobass: true\nSnoring: true\n"
              "both words: Pots and Pans in Orbit\nindex: 1\nplucked: true\n"
              "plucked and bright: Banana Kombat, Squish\ncount: 2 of 42\nnone: true\nall: 42\n");
}

TEST_F(TourInBrowser, KeepsFavouritesForTheNextTime) {
    EXPECT_EQ(reportOf(R"js(
        stops[7].querySelector(".star").click(); stops[9].querySelector(".star").click();
        stops[8].querySelector(".star").click(); stops[8].querySelector(".star").click();
        kept.click();
        check("favourites", names(shown()));
        check("kept", localStorage.getItem(storageKey));
    )js"),
              "favourites: Cyborg Pad, Digital Pad\nkept: [\"Cyborg Pad\",\"Digital Pad\"]\n");
    EXPECT_EQ(reportOf(R"js(
        kept.click();
        check("the next time", names(shown()));
    )js"),
              "the next time: Cyborg Pad, Digital Pad\n");
}

TEST_F(TourInBrowser, CopiesTheCommandWithAndWithoutAClipboard) {
    const std::string report = reportOf(R"js(
        let copied = "";
        const clipboard = text => ({ writeText: async text => { copied = text; } });
        Object.defineProperty(navigator, "clipboard", { value: clipboard(), configurable: true });
        const button = stops[7].querySelector(".copy");
        button.click();
        await until(() => button.textContent !== "Copy command");
        check("copied", copied);
        check("told", document.getElementById("told").textContent);
        await until(() => button.textContent === "Copy command");
        Object.defineProperty(navigator, "clipboard", { value: undefined });
        let selected = "";
        document.execCommand = () => { selected = document.activeElement.value; return true; };
        button.click();
        await until(() => button.textContent === "Copied");
        check("without", selected);
        check("left", document.querySelectorAll("textarea").length);
    )js");
    const std::string command =
        "zelvatone render song.mid -o 07-Cyborg-Pad.wav --program 'Cyborg Pad'\n";
    EXPECT_EQ(report, "copied: " + command + "told: The command for Cyborg Pad is copied.\n" +
                          "without: " + command + "left: 0\n");
}

// Two widths: a telephone's, and a small screen's, where the index stands beside the list.
TEST_F(TourInBrowser, FitsATelephoneAndAScreen) {
    constexpr const char* kBody = R"js(
        check("wider than the window", document.documentElement.scrollWidth > innerWidth);
        const index = document.querySelector("nav").getBoundingClientRect();
        const list = document.querySelector("main").getBoundingClientRect();
        check("index", index.right <= list.left ? "beside" : "above");
        check("open", document.getElementById("index").open);
    )js";
    EXPECT_EQ(reportOf(kBody, 390), "wider than the window: false\nindex: above\nopen: false\n");
    EXPECT_EQ(reportOf(kBody, 1280), "wider than the window: false\nindex: beside\nopen: true\n");
}

} // namespace
} // namespace zelvatone
