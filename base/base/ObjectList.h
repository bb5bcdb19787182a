#pragma once

#include <cstddef>
#include <vector>

#include "base/Export.h"
#include "base/Object.h"

namespace tavrin::base {

// The framework's registry of named objects. It owns every object it is
// given and releases them (through their virtual destructors) when it is
// destroyed. It takes no lock of its own: its owner guards it.
class TAVRIN_HOST_API ObjectList {
public:
    ObjectList();
    ~ObjectList();
    ObjectList(const ObjectList&) = delete;
    ObjectList& operator=(const ObjectList&) = delete;

    // The object registered under `name`, or null. With `byId` the name is
    // matched by its case-folding hash (the objects' ID()), otherwise by its
    // exact text. A null name finds nothing.
    object* Find(const char* name, bool byId) const;

    // Takes `obj` over. When an object of the same id (the case-folding hash
    // of its name) is registered already, `replace` releases the old one and puts `obj` in its
    // place; otherwise `obj` itself is released and false is returned. A null
    // `obj` is refused (false).
    bool Add(object* obj, bool replace);

    // Releases the object registered under `name` (exact text); false when
    // there is none.
    bool Remove(const char* name);
    // Releases every object.
    void Clear();
    std::size_t Size() const { return _objects.size(); }
    // The object at a position in registration order, or null.
    object* At(std::size_t index) const;

private:
    std::vector<object*> _objects;
};

}  // namespace tavrin::base
