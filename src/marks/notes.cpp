#include "marks/notes.h"

#include <algorithm>
#include <cmath>

void drawMusicNote(POINT point, int kind, MarkColor color, int held)
{
    for (const MonitorSurface &surface : surfaces) {
        const POINT local = toLocal(surface, point);
        if (!inReach(surface, local, 180)) continue;
        const auto [x, y] = toFloat(local);
        const int drawnSize = randInt(28, 54);  // separate for each monitor
        const float s = float(drawnSize + 4 * std::clamp(held, 0, 6));
        const float stemX = x + 0.18f * s;
        const float stemTop = y - 1.85f * s;
        const float headLeft = x - 0.44f * s;
        const float headTop = y - 0.28f * s;
        GraphicsScope scope(surface);
        const OwnedBrush ink = solidBrush(color, 0xEC);
        const OwnedPen stem = strokePen(toArgb(color, 0xEC), std::max(0.09f * s, 3.0f));
        const OwnedPen spark = cappedPen(0xDCFFFFFF, std::max(0.06f * s, 2.0f));
        fillEllipse(scope, ink, headLeft, headTop, 0.88f * s, 0.62f * s);
        drawLine(scope, stem, stemX, y - 0.2f * s, stemX, stemTop);
        if (kind == 1) {
            const OwnedPath flag = newPath();
            GdipAddPathBezier(flag.get(), stemX, stemTop + 0.1f * s, stemX + 0.45f * s, stemTop + 0.12f * s,
                              stemX + 0.58f * s, stemTop + 0.52f * s, stemX + 0.14f * s, stemTop + 0.66f * s);
            scope.note(GdipFillPath(scope.graphics, ink.get(), flag.get()));
        } else if (kind == 2) {
            const float secondX = x + 0.88f * s + 0.18f * s;
            fillEllipse(scope, ink, headLeft + 0.88f * s, headTop, 0.88f * s, 0.62f * s);
            drawLine(scope, stem, secondX, y - 0.2f * s, secondX, stemTop + 0.2f * s);
            drawLine(scope, stem, stemX, stemTop + 0.22f * s, secondX, stemTop + 0.34f * s);
        }
        const float sparkX = x + 0.85f * s;
        const float sparkY = y - 0.92f * s;
        const float arm = 0.18f * s;
        drawLine(scope, spark, sparkX - arm, sparkY, sparkX + arm, sparkY);
        drawLine(scope, spark, sparkX, sparkY - arm, sparkX, sparkY + arm);
        const int middleX = int(lroundf(x + 0.35f * s));
        const int middleY = int(lroundf(y - 0.75f * s));
        const int reach = int(ceilf(1.35f * s)) + 4;
        invalidateAround(surface, {middleX, middleY}, reach, reach);
    }
}
