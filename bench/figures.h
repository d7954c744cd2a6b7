#pragma once
// Takes times and prints them.
#include <chrono>
#include <cstdio>

inline double millisecondsOf(auto work)
{
    const auto begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
}

// Prints a row of docs/cost.md, both figures in milliseconds; a floor of 0 stands for none. The goal is "8
// ms" or a factor: "1.15 times the floor".
inline void printCost(const char *what, double figure, double floor, const char *goal)
{
    std::printf("cost | %s | %.2f ms | ", what, figure);
    if (floor > 0) std::printf("%.2f ms", floor);
    std::printf(" | %s\n", goal);
}
