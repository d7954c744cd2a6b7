#pragma once
// The save dialog. All our windows keep themselves topmost, so the dialog is raised above them and they
// are restored afterwards.
// Lets a grown-up save the picture as it is at the call. True if a file was written.
bool showSaveDialog();

// Makes every surface enabled, whole and opaque, repaints it and confines the cursor.
void restoreSurfaces();

// Destroys the dialog's hidden owner window, if there is one.
void destroyDialogHost();
