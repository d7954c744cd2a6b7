#include "clearing/actions.h"

void startAction(int) {}
