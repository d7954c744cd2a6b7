// contact_sheet OUT.png: every picture that keys and bursts leave, drawn by the program's own code with two
// seeds each on a dark, a white and a middling background.
#include "marks/bursts.h"
#include "marks/key_reactions.h"
#include "marks/notes.h"
#include "marks/stamps.h"
#include "marks/strokes.h"
#include "sheet.h"

static const MarkColor backgrounds[] = {0x37231E, 0xFFFFFF, 0xB4B9A0};

template <Shape shape> static void keySized(POINT point)
{
    shapeOnSurface(surfaces[0], shape, point, 90, randColor(120, 245));
}

template <int kind> static void note(POINT point)
{
    drawMusicNote(point, kind, randColor(120, 245), 3);
}

static void wobble(POINT point)
{
    wobblyStroke(point, {point.x + 400, point.y + 120});
}

// Four steps of the spiral, as four fast keys leave them.
static void mash(POINT point)
{
    Desk::current->cursor = point;
    keyMashCount = 12;
    for (int i = 0; i < 4; ++i)
        noteSpiral();
    resetKeyState(nullptr);
}

struct Picture {
    const wchar_t *name;
    void (*draw)(POINT);
    int scale;         // canvas pixels to one of the sheet
    int viewX, viewY;  // the middle of the cell, from the mark's point
};
static const Picture pictures[] = {
    {L"face", stampFace, 2, 0, 0},
    {L"sun", stampSun, 3, 0, 0},
    {L"rainbow", stampRainbow, 4, 200, -130},
    {L"house", stampHouse, 3, 75, -100},
    {L"balloon", stampBalloon, 3, 0, -30},
    {L"tree", stampTree, 3, 0, -150},
    {L"cat", stampCat, 2, 0, 0},
    {L"blush face", stampBlushFace, 2, 0, 0},
    {L"car", stampCar, 2, 0, -25},
    {L"train", stampTrain, 2, 0, -70},
    {L"rocket", stampRocket, 3, 0, -60},
    {L"fish", stampFish, 2, 0, 0},
    {L"big face", stampBigFace, 5, 0, 0},
    {L"stick figure", stampStickFigure, 4, 0, 0},
    {L"star", keySized<Shape::star>, 2, 0, 0},
    {L"heart", keySized<Shape::heart>, 2, 0, 0},
    {L"diamond", keySized<Shape::diamond>, 2, 0, 0},
    {L"cloud", keySized<Shape::cloud>, 2, 0, 0},
    {L"flower", keySized<Shape::flower>, 2, 0, 0},
    {L"large shape", popShape, 5, 0, 0},
    {L"plain note", note<0>, 2, 20, -50},
    {L"note with a flag", note<1>, 2, 20, -50},
    {L"two under a beam", note<2>, 2, 30, -50},
    {L"spiral of notes", mash, 6, 0, 0},
    {L"wobbly stroke", wobble, 3, 200, 60},
    {L"spiral stroke", spiralStroke, 6, 0, 0},
    {L"cat parade", catParade, 6, 0, 0},
    {L"ray burst", stampRayBurst, 3, 0, 0},
};

int main(int argc, char **argv)
{
    if (argc != 2) return 2;
    beginDesks();
    Sheet sheet(12);
    uint32_t seed = 60;
    int cooldown = 0;  // a rainbow stroke rests for some presses, from desk to desk
    for (const Picture &picture : pictures) {
        for (int column = 0; column < 6; ++column) {
            const Desk desk({Sheet::desk()}, backgrounds[column / 2]);
            seedAll(++seed);
            rainbowCooldown = cooldown;
            chooseStrokeStyle();
            cooldown = rainbowCooldown;
            picture.draw(Sheet::middle);
            sheet.add(surfaces[0], picture.name, picture.scale,
                      {Sheet::middle.x + picture.viewX, Sheet::middle.y + picture.viewY});
        }
    }
    const std::string path = argv[1];
    sheet.save({path.begin(), path.end()});
    return 0;
}
