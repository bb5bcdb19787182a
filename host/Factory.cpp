#include "base/Factory.h"

namespace tavrin::stream {

Factory::Factory() = default;

// Releases every registered object when the process ends.
Factory::~Factory() = default;

Factory& Factory::Globle() {
    static Factory factory;
    return factory;
}

}  // namespace tavrin::stream
