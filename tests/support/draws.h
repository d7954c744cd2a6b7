#pragma once
// The draws from markRng, seen and steered: a mark is described by the ranges of its draws, and its looks
// follow from plain numbers.
#include "support/imports.h"

// While it stands, the n-th colour is n times 0x111111. The first integers are as given, the others lie at
// that share of their range, which moves on by stride with each; the streams stay where they are.
struct Draws {
    double share;
    std::vector<int> forced = {};
    double stride = 0.0;
    std::vector<std::string> ranges = {};  // since take, e.g. "48..92", "colour 120..245"
    int colors = 0;

    static inline Draws *current = nullptr;
    Draws(double at, std::vector<int> first = {}, double step = 0.0) : share(at), forced(first), stride(step)
    {
        current = this;
    }
    Draws(const Draws &) = delete;
    ~Draws() { current = nullptr; }
    std::string take(size_t skipped = 0, size_t most = 999);  // on one line, e.g. "48..92 colour 50..255 x2"
    int next(int low, int high);
};

// For each value from 0 to last of the draw after the forced ones: the next ranges, and what the function
// says. Runs of the same share a line.
std::string chosen(int last, std::vector<int> forced, const std::function<std::string()> &draw);

// The recorded calls that begin with one of these, on one line; consecutive calls of one kind and colour are
// merged.
std::string joined(const std::vector<std::string> &starts);
