#pragma once

// Timer 1, and after whatever disturbs the order: puts the surfaces back on top with the hint above them,
// then limits the volume and confines the cursor again. Does nothing while the save dialog is open.
void refreshTopmost();
