// What the sanitizers do not report: the font libraries below the toolkit. It is linked into every
// test program that writes text. Without a sanitizer these functions are not called.

// NOLINTBEGIN(bugprone-reserved-identifier)
// The sanitizers' runtimes look these functions up by their names.
#define ZELVATONE_SANITIZER_CALL extern "C" __attribute__((visibility("default")))
ZELVATONE_SANITIZER_CALL const char* __lsan_default_suppressions();
ZELVATONE_SANITIZER_CALL const char* __tsan_default_suppressions();

// What Pango has asked Fontconfig for stays for the life of the process, and the leak checker does
// not find the pointer to it. It does not grow: the tests of many openings watch the memory.
const char* __lsan_default_suppressions() {
    return "leak:libfontconfig.so\n";
}

// Pango looks for fonts on a thread of its own. GLib and Fontconfig are not built for the thread
// sanitizer, which therefore does not see how they wait for each other.
const char* __tsan_default_suppressions() {
    return "called_from_lib:libfontconfig.so\n"
           "called_from_lib:libglib-2.0.so\n";
}
// NOLINTEND(bugprone-reserved-identifier)
