#include "base/ObjectBase.h"

#include <atomic>
#include <new>

#include "host/ObjectStats.h"

namespace tavrin::host {
namespace {
std::atomic<long long> gLiveObjectBytes{0};
}  // namespace

long long LiveObjectBytes() { return gLiveObjectBytes.load(); }
}  // namespace tavrin::host

namespace tavrin::base {

void* object_base::operator new(std::size_t size) {
    void* memory = ::operator new(size);
    tavrin::host::gLiveObjectBytes += static_cast<long long>(size);
    return memory;
}

void object_base::operator delete(void* memory, std::size_t size) {
    tavrin::host::gLiveObjectBytes -= static_cast<long long>(size);
    ::operator delete(memory, size);
}

}  // namespace tavrin::base
