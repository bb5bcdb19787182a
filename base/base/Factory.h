#pragma once

#include <mutex>

#include "base/Export.h"
#include "base/Log.h"
#include "base/ObjectFunc.h"
#include "base/ObjectList.h"

namespace tavrin::stream {

// The framework's process-wide factory. Its registry of named objects comes
// first; the mutex guards every find-then-add on it.
class TAVRIN_HOST_API Factory {
public:
    // The one factory of the process (the same object on every call).
    static Factory& Globle();

    Factory(const Factory&) = delete;
    Factory& operator=(const Factory&) = delete;

    tavrin::base::ObjectList& Registry() { return _registry; }
    std::mutex& RegistryMutex() { return _registryMutex; }

private:
    Factory();
    ~Factory();

    tavrin::base::ObjectList _registry;
    std::mutex _registryMutex;
};

// The red line of addFunc when the name is registered already.
inline constexpr char kNameTaken[] = "ObjectList::Find(name)";

// Registers `fn` as a function object named `name` in the factory's
// registry, unless that name is registered already (then one red line and
// nothing changes). The registry owns the new object.
template <class R, class... Args>
void addFunc(const char* name, R (*fn)(Args...)) {
    Factory& factory = Factory::Globle();
    std::unique_lock<std::mutex> lock(factory.RegistryMutex());
    if (factory.Registry().Find(name, true) != nullptr) {
        TAVRIN_LOG_ERROR(kNameTaken);
        return;
    }
    factory.Registry().Add(new tavrin::base::object_func<R, Args...>(name, fn), false);
}

}  // namespace tavrin::stream
