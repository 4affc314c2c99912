// Finds functions in a library that was loaded at run time.
#pragma once

#include <dlfcn.h>

namespace zelvatone {

class FunctionFinder {
public:
    // `library`: what dlopen() returned.
    explicit FunctionFinder(void* library) : library_(library) {}

    template<class Function>
    void find(Function*& function, const char* name) {
        function = reinterpret_cast<Function*>(dlsym(library_, name));
        isComplete_ = isComplete_ && function != nullptr;
    }
    // Whether none was missing until now.
    bool isComplete() const { return isComplete_; }

private:
    void* library_;
    bool isComplete_ = true;
};

} // namespace zelvatone
