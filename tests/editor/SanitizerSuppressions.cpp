// What the sanitizers do not report. Without a sanitizer these functions are not called.

// The sanitizers' runtimes look these functions up by their names.
#define ZELVATONE_SANITIZER_CALL extern "C" __attribute__((visibility("default")))
ZELVATONE_SANITIZER_CALL const char* __lsan_default_suppressions();
ZELVATONE_SANITIZER_CALL const char* __tsan_default_suppressions();

// An engine lives as long as the library. Fontconfig keeps the fonts that it has found for the life
// of the process, in tables whose entries point into other memory than their start.
const char* __lsan_default_suppressions() {
    return "leak:createEffectInstance\n"
           "leak:libfontconfig.so\n";
}

// Pango looks for fonts on a thread of its own, and neither GLib nor Fontconfig is built for the
// sanitizer, which therefore does not see how they wait for each other. Nothing of our own is named
// here.
const char* __tsan_default_suppressions() {
    return "race:libfontconfig.so\n"
           "called_from_lib:libglib-2.0.so\n";
}
