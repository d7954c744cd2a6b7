#pragma once
// Five presses of Shift, Num Lock or a held Shift bring up a prompt of the system's ease of access over
// the picture, and toddlers press just that. The shortcuts are off while the toy runs; the features
// themselves stay as they are, and nothing is written to the user's profile.

// Harmless when called twice. Where the system does not tell the earlier setting, nothing is changed.
void silenceShiftPrompts();

// Puts back what silenceShiftPrompts found; a second call does nothing.
void restoreShiftPrompts();
