#include "entry/placement.h"

#include <gtest/gtest.h>

TEST(Placement, StandsDialogsOverTheHostAndThePopupUnderItsButton) {
    EXPECT_EQ(PlaceOverHost({0, 0, 800, 1000}, {400, 300}), (PixelPoint{200, 232}));
    EXPECT_EQ(PlaceOverHost({0, 0, 101, 200}, {400, 400}), (PixelPoint{-149, -76}));
    EXPECT_EQ(PlaceOverHost({50, 100, 850, 900}, {400, 200}), (PixelPoint{250, 305}));

    const PixelSize popup{438, 400};
    const PixelSize screen{1024, 768};
    EXPECT_EQ(PlaceUnderButton({300, 100, 315, 120}, popup, screen), (PixelPoint{87, 121}));
    EXPECT_EQ(PlaceUnderButton({300, 400, 315, 420}, popup, screen), (PixelPoint{87, 268})) << "bottom";
    EXPECT_EQ(PlaceUnderButton({900, 100, 915, 120}, popup, screen), (PixelPoint{477, 121})) << "right";
    EXPECT_EQ(PlaceUnderButton({100, 100, 115, 120}, popup, screen), (PixelPoint{0, 121})) << "left";
    EXPECT_EQ(PlaceUnderButton({-10, 100, 5, 120}, popup, screen), (PixelPoint{-223, 121})) << "other screen";
}
