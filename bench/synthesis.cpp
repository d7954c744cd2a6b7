// Measures building both sound banks against their calls to the mathematical library alone: the same
// functions with the same arguments, function by function, in the same run. The linker leads the library's
// names through __wrap_ functions, which record the arguments once; both sides pay for that detour.
#include <algorithm>
#include <array>
#include <cstdio>
#include <vector>

#include "figures.h"
#include "sound/bank_a.h"
#include "sound/bank_b.h"

static bool keeping = false;
static std::vector<float> sines, exponents, tangents, remainders;
static std::vector<std::array<float, 2>> powers;

extern "C" {
float __real_sinf(float x);
float __real_expf(float x);
float __real_tanhf(float x);
float __real_powf(float x, float y);
float __real_fmodf(float x, float y);
float __wrap_sinf(float x)
{
    if (keeping) sines.push_back(x);
    return __real_sinf(x);
}
float __wrap_expf(float x)
{
    if (keeping) exponents.push_back(x);
    return __real_expf(x);
}
float __wrap_tanhf(float x)
{
    if (keeping) tangents.push_back(x);
    return __real_tanhf(x);
}
float __wrap_powf(float x, float y)
{
    if (keeping) powers.push_back({x, y});
    return __real_powf(x, y);
}
float __wrap_fmodf(float x, float y)
{
    if (keeping) remainders.push_back(x);
    return __real_fmodf(x, y);
}
}

static void buildBanks()
{
    buildSoundBankA();
    buildSoundBankB();
}

static float callLibrary()
{
    float sum = 0.0f;
    for (const float x : sines)
        sum += __wrap_sinf(x);
    for (const float x : exponents)
        sum += __wrap_expf(x);
    for (const float x : tangents)
        sum += __wrap_tanhf(x);
    for (const auto &[x, y] : powers)
        sum += __wrap_powf(x, y);
    for (const float x : remainders)
        sum += __wrap_fmodf(x, 1.0f);
    return sum;
}

int wmain()
{
    keeping = true;
    buildBanks();
    keeping = false;
    volatile float sink = 0.0f;
    double library = 1e9, banks = 1e9;  // the fastest of runs in turn; slower ones were disturbed
    for (int run = 0; run < 40; ++run) {
        library = std::min(library, millisecondsOf([&] { sink = callLibrary(); }));
        banks = std::min(banks, millisecondsOf(buildBanks));
    }
    std::printf("%zu sin, %zu exp, %zu tanh, %zu pow, %zu fmod\n", sines.size(), exponents.size(),
                tangents.size(), powers.size(), remainders.size());
    std::printf("%-28s %8.1f ms\n%-28s %8.1f ms\n%-28s %8.2f\n", "bare library calls", library,
                "both sound banks", banks, "ratio", banks / library);
    printCost("Both sound banks over their bare library calls", banks, library, "1.3 times the floor");
    return sink > 1e30f;
}
