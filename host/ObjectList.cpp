#include "base/ObjectList.h"

#include <algorithm>
#include <memory>

#include "base/Hash.h"

namespace tavrin::base {

ObjectList::ObjectList() = default;

ObjectList::~ObjectList() { Clear(); }

object* ObjectList::Find(const char* name, bool byId) const {
    if (name == nullptr) return nullptr;
    const std::uint32_t id = Hash(name);
    for (object* obj : _objects)
        if (byId ? obj->ID() == id : obj->GetName() == name) return obj;
    return nullptr;
}

bool ObjectList::Add(object* obj, bool replace) {
    if (obj == nullptr) return false;
    std::unique_ptr<object> owned(obj);
    auto same = std::find_if(_objects.begin(), _objects.end(),
                             [obj](const object* other) { return other->ID() == obj->ID(); });
    if (same == _objects.end()) {
        _objects.push_back(owned.get());
        owned.release();
        return true;
    }
    if (!replace) return false;
    delete *same;
    *same = owned.release();
    return true;
}

bool ObjectList::Remove(const char* name) {
    if (name == nullptr) return false;
    auto found = std::find_if(_objects.begin(), _objects.end(),
                              [name](const object* obj) { return obj->GetName() == name; });
    if (found == _objects.end()) return false;
    delete *found;
    _objects.erase(found);
    return true;
}

void ObjectList::Clear() {
    for (object* obj : _objects) delete obj;
    _objects.clear();
}

object* ObjectList::At(std::size_t index) const {
    return index < _objects.size() ? _objects[index] : nullptr;
}

}  // namespace tavrin::base
