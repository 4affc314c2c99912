// What the sanitizers shall not report: the font machinery below the toolkit. It is linked into
// every test program that writes text; without a sanitizer nobody asks.

// The sanitizers' runtimes look these functions up by their names.
#define ZELVATONE_SANITIZER_CALL extern "C" __attribute__((visibility("default")))
ZELVATONE_SANITIZER_CALL const char* __lsan_default_suppressions();
ZELVATONE_SANITIZER_CALL const char* __tsan_default_suppressions();

// Fontconfig keeps the fonts that it has found for the life of the process, in tables whose entries
// point into other memory than their start, so that the leak checker takes some for lost.
const char* __lsan_default_suppressions() {
    return "leak:libfontconfig.so\n";
}

// Pango looks for fonts on a thread of its own. GLib and Fontconfig are not built for the thread
// sanitizer, which therefore does not see how they wait for each other.
const char* __tsan_default_suppressions() {
    return "called_from_lib:libfontconfig.so\n"
           "called_from_lib:libglib-2.0.so\n";
}
