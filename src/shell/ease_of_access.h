#pragma once
// Five presses of Shift, a held Shift, Num Lock and some chords bring up prompts of the system's ease of
// access over the picture, and toddlers press just these. The shortcuts are off while the toy runs; the
// features themselves stay as they are, and nothing is written to the user's profile.

// Harmless when called twice. Nothing is changed where the system does not report a setting.
void silenceEaseOfAccess();

// Gives back the shortcuts that silenceEaseOfAccess took; a second call does nothing.
void restoreEaseOfAccess();
