#pragma once
// Angles are radians in single precision, growing clockwise on the screen. A formula that needs a
// differently rounded value writes it in place.
inline constexpr float pi = 3.1415927f;
inline constexpr float tau = 6.2831855f;
