#pragma once
// How the measurements take a time and tell it.
#include <chrono>
#include <cstdio>

inline double millisecondsOf(auto work)
{
    const auto begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
}

// A row of docs/cost.md, both figures in milliseconds; no floor is 0. The goal is "8 ms" or a factor:
// "1.15 times the floor".
inline void tellCost(const char *what, double figure, double floor, const char *goal)
{
    std::printf("cost | %s | %.2f ms | ", what, figure);
    if (floor > 0) std::printf("%.2f ms", floor);
    std::printf(" | %s\n", goal);
}
