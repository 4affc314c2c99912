// Values that one thread writes while another reads them.
#pragma once

#include <atomic>
#include <type_traits>

namespace zelvatone {

// A shared value is a plain member of a machine word at most. These two say where threads meet:
// each is the single load or store that a plain access would be, on any thread. A reader sees the
// old value or the new one, never a mixture; no order between different values is promised.

#ifdef __cpp_lib_atomic_ref

template<class Value>
Value loadShared(const Value& value) {
    static_assert(std::atomic_ref<Value>::is_always_lock_free);
    // The reference type knows no const; a load changes nothing.
    return std::atomic_ref<Value>(const_cast<Value&>(value)).load(std::memory_order_relaxed);
}

template<class Value>
void storeShared(Value& value, std::type_identity_t<Value> newValue) {
    static_assert(std::atomic_ref<Value>::is_always_lock_free);
    std::atomic_ref<Value>(value).store(newValue, std::memory_order_relaxed);
}

#else // a library without such references: the compiler's own operations on plain values

template<class Value>
Value loadShared(const Value& value) {
    static_assert(__atomic_always_lock_free(sizeof(Value), nullptr));
    std::remove_const_t<Value> loaded;
    __atomic_load(&value, &loaded, __ATOMIC_RELAXED);
    return loaded;
}

template<class Value>
void storeShared(Value& value, std::type_identity_t<Value> newValue) {
    static_assert(__atomic_always_lock_free(sizeof(Value), nullptr));
    __atomic_store(&value, &newValue, __ATOMIC_RELAXED);
}

#endif

} // namespace zelvatone
