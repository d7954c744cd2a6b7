#pragma once
// Every import of the running program by its name: replace it, hear of its calls, let it fail. The pointers
// of the import table lead here, so plainly declared functions are caught as well as dllimport ones, and the
// tested code needs neither a seam nor an option of the linker. GoogleTest and the C++ library share the
// table: replacements pass on what they are not asked for.
#include <cstdint>
#include <cstring>
#include <functional>
#include <map>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

struct Call;
using Replacement = std::function<int64_t(const Call &)>;

struct Import {
    const void *target;  // what its calls jump to; first, since the code behind the table reads it
    const void *system;  // the system's own function
    std::string name;
    std::vector<Replacement> replacements = {};  // the last one is asked first
    void (*record)(const Call &) = nullptr;      // hears of each call before it is made, unless it fails
    bool failing = false;
    uint64_t failed = 0;  // so many calls

    void push(Replacement replacement) { replacements.push_back(std::move(replacement)), update(); }
    void pop() { replacements.pop_back(), update(); }
    void setFailing(bool fails) { failing = fails, update(); }  // in the way of its kind
    void update();                                              // after another change
};

// A call on its way: its arguments as the calling convention hands them over.
struct Call {
    Import &import;
    const int64_t *words;
    const double *floats;  // of the first four arguments
    size_t above;          // replacements that were not asked yet

    template <class T> T get(size_t index) const
    {
        if constexpr (std::is_reference_v<T>)
            return *get<std::remove_reference_t<T> *>(index);
        else {
            T value;
            const bool inFloats = std::is_floating_point_v<T> && index < 4;
            std::memcpy(&value, inFloats ? (const void *)(floats + index) : words + index, sizeof value);
            return value;
        }
    }
    int64_t passOn() const;  // to the replacement below, at last to the system
};

// What the program's own objects import, by name; the build makes the list. They stay where they are.
std::map<std::string, Import> &imports();
Import &importOf(const std::string &name);  // ends the process if the executable has none of that name

// Code to be called as a function with these replacements, such as a method of a COM object.
const void *codeOf(Import &import);

// The system's own function, past all that is replaced.
#define SYSTEM(name) reinterpret_cast<decltype(&::name)>(const_cast<void *>(importOf(#name).system))

// The parameters of a function or lambda, the first ones of the import's, say which arguments it gets.
template <class Imported, class... All, class Result, class... Parameters>
Replacement replacementBy(Imported (*)(All...), std::function<Result(Parameters...)> function)
{
    return [function]<size_t... I>(std::index_sequence<I...>) {
        static_assert((... && std::is_same_v<Parameters, std::tuple_element_t<I, std::tuple<All...>>>),
                      "the parameters are not those of the import");
        return [function](const Call &call) {
            int64_t word = 0;
            if constexpr (std::is_void_v<Result>) {
                function(call.get<Parameters>(I)...);
            } else {
                const Result result = function(call.get<Parameters>(I)...);
                std::memcpy(&word, &result, sizeof result);
            }
            return word;
        };
    }(std::index_sequence_for<Parameters...>());
}
#define REPLACEMENT(name, ...) replacementBy(decltype (&::name)(), std::function(__VA_ARGS__))

// REPLACE(GetForegroundWindow, [] { return HWND(); }); replaces it to the end of the scope.
struct Replaced {
    Import &import;
    Replaced(const char *name, Replacement by) : import(importOf(name)) { import.push(std::move(by)); }
    Replaced(const Replaced &) = delete;
    ~Replaced() { import.pop(); }
};
#define REPLACE(name, ...) const Replaced name##Replaced(#name, REPLACEMENT(name, __VA_ARGS__))

// Lets an import fail to the end of the scope.
struct Failing {
    Import &import;
    explicit Failing(const char *name) : import(importOf(name)) { import.setFailing(true); }
    Failing(const Failing &) = delete;
    ~Failing() { import.setFailing(false); }
};
