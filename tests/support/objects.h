#pragma once
// COM objects whose methods succeed unless their answer says otherwise. Each call is recorded by its place in
// the method table: "voice 20"; argument 0 of a call is the object.
#include "support/desk.h"

struct Object {
    const void *const *methods;  // objectMethods; first, where COM looks for it
    const char *name;
    HRESULT (*answer)(Object &self, int place, const Call &call) = nullptr;
    static inline int held = 0;  // references to all of them; the program gives each one back
};

inline const void *const *const objectMethods = [] {
    auto &codes = *new std::vector<const void *>;
    for (int place = 0; place < 40; ++place) {
        auto &method = *new Import{};
        method.push([place](const Call &call) -> int64_t {
            if (place == 1) return ++Object::held;
            if (place == 2) return --Object::held;
            Object &object = *call.get<Object *>(0);
            Desk::current->record(object.name + (" " + std::to_string(place)));
            return object.answer ? object.answer(object, place, call) : S_OK;
        });
        codes.push_back(codeOf(method));
    }
    return codes.data();
}();

// Hands an object out as COM does.
template <class T> HRESULT give(Object &object, T **out)
{
    ++Object::held;
    *out = reinterpret_cast<T *>(&object);
    return S_OK;
}
