// Gives back what this file's own C++ runtime has allocated. Only for a file that carries the
// runtime: one that is shared still serves others.

// NOLINTBEGIN(bugprone-reserved-identifier,readability-identifier-naming): its name in the runtime
namespace __gnu_cxx {
void __freeres();
}
// NOLINTEND(bugprone-reserved-identifier,readability-identifier-naming)

namespace {

// When a library is loaded, its runtime sets 70 kB aside for exceptions that are thrown when memory
// has run out, and leaves them behind when the library goes. The lowest priority that is free to
// use makes this the last thing that the library does.
[[gnu::destructor(101)]] void releaseRuntimeMemory() {
    __gnu_cxx::__freeres();
}

} // namespace
