#include "saving/capture.h"

#include "hint/panel.h"
#include "saving/save_dialog.h"
#include "shell/shutdown.h"
#include "shell/surfaces.h"
#include "sound/bank_a.h"
#include "sound/playback.h"

void captureOrExit(uint32_t key, HWND)
{
    if (key != VK_F4) return;
    closeHintPanel();
    shutdownApp(false);
}
