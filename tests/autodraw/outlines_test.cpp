#include "autodraw/outlines.h"

#include <gtest/gtest.h>

#include "autodraw/pen_paths.h"
#include "autodraw/sequencer.h"
#include "support/fakes.h"

struct Picture {
    const char *name;
    void (*build)(POINT);
    int draws;               // outputs of the stream
    size_t polylines, open;  // the last ones are open; a sun's rays are as many as were drawn
    int spacing;             // at most
    int narrowest, widest;
    bool quick, clamped;
};
static const Picture pictures[] = {
    {"star", outlineStar, 7, 1, 0, 14, 174, 410, false, true},
    {"square", outlineSquare, 7, 1, 0, 13, 156, 466, false, true},
    {"diamond", outlineDiamond, 6, 1, 0, 11, 156, 376, false, false},
    {"heart", outlineHeart, 8, 1, 0, 10, 80, 250, false, true},
    {"ellipse", outlineEllipse, 7, 1, 0, 10, 95, 181, false, true},
    {"triangle", outlineTriangle, 6, 1, 0, 13, 90, 294, false, false},
    {"flower", outlineFlower, 6, 1, 0, 12, 78, 288, false, true},
    {"sun", outlineSun, 9, 0, 0, 12, 130, 360, true, false},
    {"face", outlineFace, 7, 4, 1, 12, 99, 276, true, false},
    {"house", outlineHouse, 8, 3, 0, 12, 111, 256, true, false},
    {"rocket", outlineRocket, 7, 5, 3, 11, 48, 140, true, false},
    {"stick figure", outlineStickFigure, 6, 5, 4, 12, 56, 146, true, false},
    {"rainbow", outlineRainbow, 6, 5, 5, 11, 480, 1040, true, true},
};

static RECT extent()
{
    RECT box = {10000, 10000, -10000, -10000};
    for (const std::vector<POINT> &polyline : outlineQueue) {
        for (const auto &[x, y] : polyline)
            box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x),
                   std::max(box.bottom, y)};
    }
    return box;
}

TEST(Outlines, AreEvenlySpacedClosedClampedAndOfTheirSize)
{
    for (const Picture &picture : pictures) {
        for (uint32_t seed = 1; seed <= 60; ++seed) {
            SCOPED_TRACE(testing::Message() << picture.name << " seed " << seed);
            const Desk desk({});
            fakes.screen = {-200, 0, 2000, 1500};
            seedAll(seed);
            picture.build({700, 800});
            Rng drawn(seed);
            drawn.discard(size_t(picture.draws));
            EXPECT_EQ(markRng, drawn);
            EXPECT_TRUE(outlineTracing && outlineQuick == picture.quick && penColor == outlineColor);
            const size_t count = outlineQueue.size();
            EXPECT_TRUE(picture.polylines ? count == picture.polylines : count >= 9 && count <= 13);
            const size_t closed = picture.polylines ? count - picture.open : 1;
            for (size_t i = 0; i < count; ++i) {
                const std::vector<POINT> &polyline = outlineQueue[i];
                for (size_t j = 1; j < polyline.size(); ++j)
                    ASSERT_LE(distanceBetween(polyline[j - 1], polyline[j]), picture.spacing + 0.75);
                EXPECT_EQ(distanceBetween(polyline.front(), polyline.back()) == 0.0, i < closed);
            }
            const RECT box = extent();
            EXPECT_TRUE(box.right - box.left >= picture.narrowest && box.right - box.left <= picture.widest);
            EXPECT_NEAR((box.left + box.right) / 2.0, 700.0, 8.0);
            seedAll(seed);
            picture.build({-195, 5});  // in the corner of the screen
            EXPECT_EQ(extent().left >= -200 && extent().top >= 0, picture.clamped);
        }
    }
    std::vector<POINT> line;
    appendSpaced(line, {0, 0}, 3);
    appendSpaced(line, {20, 0}, 3);  // a spacing of 8 at least
    appendSpaced(line, {20, 0}, 3);  // no way at all: the same point again
    EXPECT_EQ(line.size(), 5u);
    EXPECT_EQ(line[1].x, 8);
}
