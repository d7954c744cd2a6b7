#include "support/desk.h"

#include <gtest/gtest.h>

#include "marks/gdi_plus.h"

TEST(Desk, CountsWhatIsNotFreedAndWhatFails)
{
    Desk desk(oneMonitor);
    const OwnedPen pen = plainPen(0xFF000000u, 2.0f);
    const Failing brushes("GdipCreateSolidFill");
    EXPECT_EQ(solidBrush(0xFF000000u).get(), nullptr);
    EXPECT_EQ(leaks(), "1 GdipCreatePen1");
}
