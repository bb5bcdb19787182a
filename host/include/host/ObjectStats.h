#pragma once

#include "base/Export.h"

namespace tavrin::host {

// Bytes currently held by framework objects: what object_base's operator new
// handed out minus what its sized operator delete was told it released. It
// returns to its former value only when every object is released with its
// own size.
TAVRIN_HOST_API long long LiveObjectBytes();

}  // namespace tavrin::host
