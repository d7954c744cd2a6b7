#include "settings/options.h"

void loadOptions(AppOptions &) {}
