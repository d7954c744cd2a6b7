#pragma once
// Every import of the running program by its name: count it, replace it, let it fail. The pointers of the
// import table lead here, so plainly declared functions are caught as well as dllimport ones, and the tested
// code needs neither a seam nor an option of the linker. GoogleTest and the C++ library share the table:
// replacements pass on what they are not asked for.
#include <cstdint>
#include <cstring>
#include <functional>
#include <map>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

struct Call;
using Replacement = std::function<int64_t(const Call &)>;

struct Import {  // the code behind the table knows the first five
    const void *target = nullptr;
    uint64_t calls = 0, failed = 0;
    int64_t failure = 0;           // what it returns while it fails
    const void *system = nullptr;  // the system's own function
    std::string name;
    std::vector<Replacement> replacements;  // the last one is asked first
    void (*tell)(const Call &) = nullptr;   // hears of each call before it is made
    bool failing = false;
};

// A call on its way: its arguments as the calling convention hands them over.
struct Call {
    Import &import;
    const int64_t *words;
    const double *floats;  // of the first four arguments
    size_t above;          // replacements that were not asked yet

    template <class T> T get(size_t index) const
    {
        if constexpr (std::is_reference_v<T>) {
            return *reinterpret_cast<std::remove_reference_t<T> *>(words[index]);
        } else {
            T value;
            const bool inFloats = std::is_floating_point_v<T> && index < 4;
            std::memcpy(&value, inFloats ? static_cast<const void *>(floats + index) : words + index,
                        sizeof value);
            return value;
        }
    }
    int64_t passOn() const;  // to the replacement below, at last to the system
};

// The import of that name; ends the process if the executable has none. findImport returns null instead.
Import &importOf(const std::string &name);
Import *findImport(const std::string &name);

// All that the program's own objects import, by name. Made by the build.
const std::vector<std::string> &programImports();

void setTell(Import &import, void (*tell)(const Call &));
void setFailing(Import &import, bool failing);
void pushReplacement(const std::string &name, Replacement replacement);  // nothing if it is not imported
void popReplacement(const std::string &name);

// The system's own function, past all that is replaced.
#define SYSTEM(name) reinterpret_cast<decltype(&::name)>(const_cast<void *>(importOf(#name).system))

// The parameters of a function or lambda, the first ones of the import's, say which arguments it gets.
template <class Function, class Callable, class Result, class... Parameters>
Replacement bindArguments(Callable callable)
{
    static_assert(
        []<class R, class... All>(R (*)(All...)) {
            return []<size_t... I>(std::index_sequence<I...>) {
                return (... && std::is_same_v<Parameters, std::tuple_element_t<I, std::tuple<All...>>>);
            }(std::index_sequence_for<Parameters...>());
        }(Function()),
        "the parameters are not those of the import");
    return [callable](const Call &call) {
        return [&]<size_t... I>(std::index_sequence<I...>) {
            int64_t word = 0;
            if constexpr (std::is_void_v<Result>) {
                callable(call.get<Parameters>(I)...);
            } else {
                const Result result = callable(call.get<Parameters>(I)...);
                std::memcpy(&word, &result, sizeof result);
            }
            return word;
        }(std::index_sequence_for<Parameters...>());
    };
}
template <class Function, class Result, class... Parameters>
Replacement replacementBy(Result (*function)(Parameters...))
{
    return bindArguments<Function, Result (*)(Parameters...), Result, Parameters...>(function);
}
template <class Function, class Lambda> Replacement replacementBy(Lambda lambda)
{
    return [&]<class Result, class... Parameters>(Result (Lambda::*)(Parameters...) const) {
        return bindArguments<Function, Lambda, Result, Parameters...>(lambda);
    }(&Lambda::operator());
}

// REPLACE(GetForegroundWindow, [] { return HWND(); }); replaces it to the end of the scope.
class Replaced {
  public:
    Replaced(const char *which, Replacement replacement) : name(which)
    {
        importOf(name);
        pushReplacement(name, std::move(replacement));
    }
    ~Replaced() { popReplacement(name); }
    Replaced(const Replaced &) = delete;
    Replaced &operator=(const Replaced &) = delete;

  private:
    std::string name;
};
#define REPLACEMENT(name, ...) replacementBy<decltype(&::name)>(__VA_ARGS__)
#define REPLACE(name, ...) const Replaced name##Replaced(#name, REPLACEMENT(name, __VA_ARGS__))

// Lets an import fail to the end of the scope, in the way of its kind.
class Failing {
  public:
    explicit Failing(const char *which) : name(which) { setFailing(importOf(name), true); }
    ~Failing() { setFailing(importOf(name), false); }
    Failing(const Failing &) = delete;
    Failing &operator=(const Failing &) = delete;

  private:
    std::string name;
};
