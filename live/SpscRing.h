// A queue from one thread to another, neither of which ever waits.
#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <span>
#include <vector>

namespace zelvatone {

// One thread writes, one reads; memory is taken at construction alone. Element: trivially copyable.
template<class Element>
class SpscRing {
public:
    // Holds up to `capacity` elements.
    explicit SpscRing(std::size_t capacity) : elements_(capacity + 1) {}

    // Writer. False, with nothing written, when they do not all fit.
    bool write(std::span<const Element> elements) {
        const std::size_t end = end_.load(std::memory_order_relaxed);
        const std::size_t begin = begin_.load(std::memory_order_acquire);
        if (elements.size() > elements_.size() - 1 - lengthOf(begin, end)) {
            return false;
        }
        const std::size_t first = std::min(elements.size(), elements_.size() - end);
        std::copy_n(elements.begin(), first, elements_.begin() + offset(end));
        std::copy(elements.begin() + offset(first), elements.end(), elements_.begin());
        end_.store((end + elements.size()) % elements_.size(), std::memory_order_release);
        return true;
    }
    bool write(const Element& element) { return write(std::span(&element, 1)); }

    // Reader. Fills the front of `target` and returns how many elements that are.
    std::size_t read(std::span<Element> target) {
        const std::size_t begin = begin_.load(std::memory_order_relaxed);
        const std::size_t end = end_.load(std::memory_order_acquire);
        const std::size_t count = std::min(target.size(), lengthOf(begin, end));
        const std::size_t first = std::min(count, elements_.size() - begin);
        std::copy_n(elements_.begin() + offset(begin), first, target.begin());
        std::copy_n(elements_.begin(), count - first, target.begin() + offset(first));
        begin_.store((begin + count) % elements_.size(), std::memory_order_release);
        return count;
    }
    bool read(Element& element) { return read(std::span(&element, 1)) == 1; }

private:
    static std::ptrdiff_t offset(std::size_t position) {
        return static_cast<std::ptrdiff_t>(position);
    }
    std::size_t lengthOf(std::size_t begin, std::size_t end) const {
        return (end + elements_.size() - begin) % elements_.size();
    }

    std::vector<Element> elements_; // one place more than are used, so that full is not empty
    std::atomic<std::size_t> begin_{0};
    std::atomic<std::size_t> end_{0};
};

} // namespace zelvatone
