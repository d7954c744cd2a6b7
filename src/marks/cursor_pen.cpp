#include "marks/cursor_pen.h"

void penKey(uint32_t) {}
