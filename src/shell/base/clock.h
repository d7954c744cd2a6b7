#pragma once
// Two clocks: GetTickCount milliseconds (unsigned 32-bit differences) limit sounds and repeats. The steady
// clock times the keys, whose limits are finer than GetTickCount's resolution.
#include <chrono>
#include <cstdint>
#include <limits>

// A steady-clock time not yet set. Test for it before subtracting, as the difference would overflow.
inline constexpr int64_t noTime = std::numeric_limits<int64_t>::min();

// Nanoseconds of the steady clock.
inline int64_t steadyNow()
{
    const auto sinceStart = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::nanoseconds>(sinceStart).count();
}

// True if time is set and at most ms milliseconds before now; both in steady-clock nanoseconds.
inline bool within(int64_t now, int64_t time, int64_t ms)
{
    return time != noTime && now - time <= ms * 1'000'000;
}
