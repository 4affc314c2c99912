// Tells the leak checker what the plug-in keeps on purpose:
// - an engine lives as long as the library, whatever becomes of the plug-in object that the host
//   closes;
// - an event that finds the queue full is lost, and its few bytes with it. The tests that flood the
//   queue are in one file.
extern "C" [[gnu::visibility("default")]] const char* __lsan_default_suppressions(); // NOLINT

extern "C" const char* __lsan_default_suppressions() { // NOLINT: the name that the runtime calls
    return "leak:createEffectInstance\n"
           "leak:HostileValueTest.cpp\n";
}
