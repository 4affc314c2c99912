#include "vstgui/lib/damage.h"

#include <cstddef>

namespace VSTGUI {
namespace {

// Twice the knobs of a large editor. Beyond it, one large picture costs less than many small ones.
constexpr std::size_t kMostRects = 64;

double area(const CRect& rect) {
    return rect.getWidth() * rect.getHeight();
}

// Whether one rectangle around both costs no more pixels than the two do.
bool areBetterAsOne(const CRect& a, const CRect& b) {
    return area(CRect(a).unite(b)) <= area(a) + area(b);
}

} // namespace

void Damage::add(const CRect& rect) {
    CRect added = CRect(rect).makeIntegral().bound(bounds);
    if (added.isEmpty()) {
        return;
    }
    std::erase_if(rects, [&added](const CRect& known) {
        const bool isAbsorbed = areBetterAsOne(known, added);
        if (isAbsorbed) {
            added.unite(known);
        }
        return isAbsorbed;
    });
    rects.push_back(added);
    if (rects.size() > kMostRects) {
        for (const CRect& known : rects) {
            added.unite(known);
        }
        rects.assign(1, added);
    }
}

} // namespace VSTGUI
