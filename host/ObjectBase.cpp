#include "base/ObjectBase.h"

#include <new>

namespace tavrin::base {

void* object_base::operator new(std::size_t size) { return ::operator new(size); }

void object_base::operator delete(void* memory, std::size_t size) { ::operator delete(memory, size); }

}  // namespace tavrin::base
