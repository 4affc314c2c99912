// Tells the leak checker what the plug-in keeps on purpose: an engine lives as long as the library,
// whatever becomes of the plug-in object that the host closes.
extern "C" [[gnu::visibility("default")]] const char* __lsan_default_suppressions(); // NOLINT

extern "C" const char* __lsan_default_suppressions() { // NOLINT: the name that the runtime calls
    return "leak:createEffectInstance\n";
}
