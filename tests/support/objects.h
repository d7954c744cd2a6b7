#pragma once
// COM objects whose methods all succeed. Each call is recorded by its place in the method table: "voice 20".
#include "support/desk.h"

struct Object {
    const void *const *methods;  // objectMethods
    const char *name;
    int references;
    int64_t (*answer)(int place, void **, void **, void **, void **);  // what a method does besides
};

template <int place> int64_t objectMethod(Object *self, void **a, void **b, void **c, void **d)
{
    if (place == 1) return ++self->references;
    if (place == 2) return --self->references;
    if (Desk::current->telling)
        Desk::current->calls.push_back({self->name + (" " + std::to_string(place)), self->name, {}});
    return self->answer ? self->answer(place, a, b, c, d) : S_OK;
}

inline const void *const *const objectMethods = []<size_t... place>(std::index_sequence<place...>) {
    static const void *const all[] = {reinterpret_cast<const void *>(objectMethod<int(place)>)...};
    return all;
}(std::make_index_sequence<40>());

// Hands an object out as COM does.
template <class T> int64_t give(Object &object, T **out)
{
    ++object.references;
    *out = reinterpret_cast<T *>(&object);
    return S_OK;
}
