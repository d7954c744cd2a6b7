#include "marks/notes.h"

void drawMusicNote(POINT, int, MarkColor, int) {}
