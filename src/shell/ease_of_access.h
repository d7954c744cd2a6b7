#pragma once
// Five presses of Shift, a held Shift or Num Lock and some chords open accessibility prompts over the
// picture, and toddlers press just these. The shortcuts are off while the program runs; the features stay as
// they are, and nothing is written to the user's profile.

// A second call does nothing. A setting that the system does not report is left alone.
void silenceEaseOfAccess();

// Restores the shortcuts that silenceEaseOfAccess turned off; a second call does nothing.
void restoreEaseOfAccess();
