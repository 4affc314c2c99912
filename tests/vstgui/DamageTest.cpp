// The parts of a window that are due.
#include "vstgui/lib/damage.h"

#include <gmock/gmock.h>

namespace VSTGUI::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

constexpr CRect kBounds{0, 0, 717, 477};

TEST(Damage, KeepsApartWhatLiesApart) {
    Damage damage(kBounds);
    damage.add(CRect(10, 10, 58, 58));
    damage.add(CRect(600, 400, 648, 448));
    EXPECT_THAT(damage.take(),
                UnorderedElementsAre(CRect(10, 10, 58, 58), CRect(600, 400, 648, 448)));
    EXPECT_TRUE(damage.isEmpty());
    EXPECT_THAT(damage.take(), IsEmpty());
}

TEST(Damage, IsOneRectangleHoweverOftenItIsAdded) {
    Damage damage(kBounds);
    for (int time = 0; time < 100000; ++time) {
        damage.add(kBounds);
        damage.add(CRect(10, 10, 58, 58));
    }
    EXPECT_THAT(damage.take(), ElementsAre(kBounds));
}

TEST(Damage, JoinsWhatFitsTogether) {
    Damage damage(kBounds);
    damage.add(CRect(0, 0, 100, 100));
    damage.add(CRect(100, 0, 200, 100));
    EXPECT_THAT(damage.take(), ElementsAre(CRect(0, 0, 200, 100)));
}

TEST(Damage, IsCutAtTheWindowAndGrowsToWholePixels) {
    Damage damage(kBounds);
    damage.add(CRect(-5, -5, 2.5, 2.5));
    EXPECT_THAT(damage.take(), ElementsAre(CRect(0, 0, 3, 3)));
    damage.add(CRect(800, 0, 900, 100));
    EXPECT_TRUE(damage.isEmpty());
}

TEST(Damage, StaysSmallAndCoversAllWhenItIsScattered) {
    Damage damage(kBounds);
    for (int x = 0; x < 700; x += 4) {
        for (int y = 0; y < 470; y += 4) {
            damage.add(CRect(x, y, x + 1, y + 1));
        }
    }
    const auto rects = damage.take();
    EXPECT_LE(rects.size(), 64U);
    const auto isCovered = [&](int x, int y) {
        return std::any_of(rects.begin(), rects.end(),
                           [&](const CRect& rect) { return rect.pointInside(CPoint(x, y)); });
    };
    for (int x = 0; x < 700; x += 4) {
        for (int y = 0; y < 470; y += 4) {
            ASSERT_TRUE(isCovered(x, y)) << x << ", " << y;
        }
    }
}

} // namespace
} // namespace VSTGUI::test
