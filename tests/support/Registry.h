#pragma once

#include <mutex>
#include <string>

#include "base/AttrSet.h"
#include "base/Factory.h"
#include "base/IFunc.h"

namespace tavrin::test {

using ConvertFunc = tavrin::base::IFunc<bool, const char*, std::string*>;
using CommandFunc = tavrin::base::IFunc<bool, tavrin::base::AttrSet&>;

// Releases every object of the factory's registry.
inline void ClearRegistry() {
    auto& factory = tavrin::stream::Factory::Globle();
    std::lock_guard<std::mutex> lock(factory.RegistryMutex());
    factory.Registry().Clear();
}

// The registered object `name` seen through its callable interface F, or
// null.
template <class F>
F* FindFunc(const char* name) {
    auto& factory = tavrin::stream::Factory::Globle();
    std::lock_guard<std::mutex> lock(factory.RegistryMutex());
    return dynamic_cast<F*>(factory.Registry().Find(name, true));
}

}  // namespace tavrin::test
