#include "support/draws.h"

#include "marks/random.h"
#include "support/desk.h"

int Draws::next(int low, int high)
{
    ranges.push_back(std::to_string(low) + ".." + std::to_string(high));
    if (forced.empty()) {
        const double value = low + (double(high) - low + 1.0) * share;
        share += stride;
        if (share >= 1.0 && stride > 0.0) share -= 1.0;
        return int(std::min(value, double(high)));
    }
    const int value = forced.front();
    forced.erase(forced.begin());
    if (value < low || value > high) reportMisuse("draw " + std::to_string(value) + " of " + ranges.back());
    return value;
}

std::string Draws::take(size_t skipped, size_t most)
{
    std::string line;
    for (size_t i = skipped, end; i < std::min(ranges.size(), skipped + most); i = end) {
        for (end = i + 1; end < ranges.size() && ranges[end] == ranges[i];)
            ++end;
        line += (line.empty() ? "" : " ") + ranges[i];
        if (end - i > 1) line += " x" + std::to_string(end - i);
    }
    ranges.clear();
    return line;
}

std::string chosen(int last, std::vector<int> forced, const std::function<std::string()> &draw)
{
    Desk desk(oneMonitor);
    forced.push_back(0);
    std::string lines, before;
    for (int choice = 0, begin = 0; choice <= last + 1; ++choice) {
        forced.back() = choice;
        Draws draws(0.0, forced);
        desk.calls.clear();
        std::string said = choice <= last ? draw() : "";
        said.insert(0, draws.take(forced.size(), 9));
        if (choice > 0 && said != before)
            lines += std::to_string(std::exchange(begin, choice)) + ".." + std::to_string(choice - 1) + ": " +
                     before + "\n";
        before = said;
    }
    return lines;
}

std::string joined(const std::vector<std::string> &starts)
{
    std::string line, last;
    for (const CallLine &call : Desk::current->callsOf(starts)) {
        size_t at = call.text.size();
        for (int i = 0; i < call.numbers; ++i)
            at = call.text.rfind(' ', at - 1);
        const std::string kind = call.text.substr(0, at);
        line += kind == last && call.numbers > 0 ? " |" + call.text.substr(at) : "; " + call.text;
        last = kind;
    }
    return line;
}

// The linker leads every draw of another source here.
#define STREAM                                                                                               \
    "_Z7drawIntRSt23mersenne_twister_engineIjLy32ELy624ELy397ELy31ELj2567483615ELy11ELj4294967295ELy7ELj"    \
    "2636928640ELy15ELj4022730752ELy18ELj1812433253EEii"
int32_t realDrawInt(Rng &stream, int32_t lo, int32_t hi) asm("__real_" STREAM);
int32_t wrapDrawInt(Rng &stream, int32_t lo, int32_t hi) asm("__wrap_" STREAM);
int32_t wrapDrawInt(Rng &stream, int32_t lo, int32_t hi)
{
    if (!Draws::current || &stream != &markRng) return realDrawInt(stream, lo, hi);
    return Draws::current->next(lo, hi);
}

MarkColor realRandColor(int32_t lo, int32_t hi) asm("__real__Z9randColorii");
MarkColor wrapRandColor(int32_t lo, int32_t hi) asm("__wrap__Z9randColorii");
MarkColor wrapRandColor(int32_t lo, int32_t hi)
{
    if (!Draws::current) return realRandColor(lo, hi);
    Draws::current->ranges.push_back("colour " + std::to_string(lo) + ".." + std::to_string(hi));
    return MarkColor(0x111111 * (Draws::current->colors++ % 15 + 1));
}
