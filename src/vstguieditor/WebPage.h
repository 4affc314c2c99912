// Web pages in the user's browser.
#pragma once

namespace zelvatone {

inline constexpr const char* kMakerWebPage = "https://quillfeather.example/zelvatone";

// Asks the desktop to show the page `address`, and does not wait for it. A failure is ignored. The
// host's processes, signals and files are left alone.
void openWebPage(const char* address);

} // namespace zelvatone
