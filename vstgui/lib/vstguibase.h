// Version, basic names and reference counting.
#pragma once

#include <cstdint>
#include <utility>

// The version of the interface that this toolkit follows.
#define VSTGUI_VERSION_MAJOR 4
#define VSTGUI_VERSION_MINOR 14
#define VSTGUI_VERSION_PATCHLEVEL 2

#if defined(_WIN32)
#define WINDOWS 1
#else
#define LINUX 1
#endif

namespace VSTGUI {

using CCoord = double; // pixels
using UTF8StringPtr = const char*;

// What a SharedPointer asks of its object.
class IReference {
public:
    virtual void remember() = 0;
    virtual void forget() = 0;

protected:
    virtual ~IReference() = default;
};

// An object that is born with one reference, its maker's, and dies with the last one. The count is
// plain: references are taken and given back on the user-interface thread only.
class NonAtomicReferenceCounted : public virtual IReference {
public:
    NonAtomicReferenceCounted() = default;
    NonAtomicReferenceCounted(const NonAtomicReferenceCounted&) = delete;
    NonAtomicReferenceCounted& operator=(const NonAtomicReferenceCounted&) = delete;

    void remember() override { ++references; }
    void forget() override {
        // The last reference is still counted during beforeDelete(), so that code called from there
        // may take and give back one of its own.
        if (references == 1) {
            beforeDelete();
        }
        if (--references == 0) {
            delete this;
        }
    }
    std::int32_t getNbReference() const { return references; }

protected:
    ~NonAtomicReferenceCounted() override = default;
    // Called before the last reference goes.
    virtual void beforeDelete() {}

private:
    std::int32_t references = 1;
};

// Holds one reference to an object, or to none. User-interface thread.
template<class T>
class SharedPointer {
public:
    SharedPointer() = default;
    // Takes a reference of its own, or with `remember` false takes over the caller's.
    SharedPointer(T* object, bool remember = true) : object(object) { // NOLINT(*-explicit-*)
        if (object && remember) {
            object->remember();
        }
    }
    SharedPointer(const SharedPointer& other) : SharedPointer(other.object) {}
    SharedPointer(SharedPointer&& other) noexcept : object(std::exchange(other.object, nullptr)) {}
    template<class U>
    SharedPointer(const SharedPointer<U>& other) // NOLINT(*-explicit-*)
        : SharedPointer(static_cast<T*>(other.get())) {}
    ~SharedPointer() {
        if (object) {
            object->forget();
        }
    }
    SharedPointer& operator=(SharedPointer other) noexcept {
        std::swap(object, other.object);
        return *this;
    }

    T* get() const { return object; }
    T* operator->() const { return object; }
    T& operator*() const { return *object; }
    operator T*() const { return object; } // NOLINT(*-explicit-*)
    // The same object as a U, or null if it is none.
    template<class U>
    SharedPointer<U> cast() const {
        return SharedPointer<U>(dynamic_cast<U*>(object));
    }

private:
    T* object = nullptr;
};

// Takes over the caller's reference.
template<class T>
SharedPointer<T> owned(T* object) {
    return SharedPointer<T>(object, false);
}

// Takes a reference beside the caller's.
template<class T>
SharedPointer<T> shared(T* object) {
    return SharedPointer<T>(object);
}

// A new object with one owner.
template<class T, class... Arguments>
SharedPointer<T> makeOwned(Arguments&&... arguments) {
    return owned(new T(std::forward<Arguments>(arguments)...));
}

} // namespace VSTGUI
