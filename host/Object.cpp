#include "base/Object.h"

#include <typeinfo>

namespace tavrin::base {

object::object(const char* name) : _enabled(true) { Name(name); }

object::~object() {}

ostream& object::operator>>(ostream& os) const { return os << _name; }

bool object::fromAttrSet(const AttrSet& set) {
    const char* name = set.Get("name");
    if (name != nullptr) Name(name);
    return true;
}

bool object::toAttrSet(AttrSet& set) const { return set.Add("name", _name.c_str()); }

bool object::ReceiveMessage(Message& /*message*/, object* /*sender*/) { return false; }

object* object::Clone() const {
    if (typeid(*this) != typeid(object)) return nullptr;
    return new object(*this);
}

}  // namespace tavrin::base
