#pragma once

#include <string>
#include <typeinfo>

namespace tavrin::base {

struct AttrInfo;

// Generic property access of framework objects by property id. Every
// operation has a default that reports "no such property"; classes with
// properties override what they support. No virtual destructor: objects are
// never deleted through this interface.
class IParam {
public:
    virtual const char** getPropertyNameList() const { return nullptr; }
    virtual bool hasProperty(unsigned int /*id*/) const { return false; }
    virtual bool getPropertyInfo(unsigned int /*id*/, AttrInfo& /*info*/) const { return false; }
    virtual bool set(unsigned int /*id*/, void* /*value*/, const std::type_info* /*type*/) {
        return false;
    }
    virtual bool get(unsigned int /*id*/, void* /*value*/, const std::type_info* /*type*/) const {
        return false;
    }
    virtual IParam* getChild(unsigned int /*id*/) const { return const_cast<IParam*>(this); }
    // The name is not used: the property is set by its id through set().
    virtual bool setoradd(const char* /*name*/, unsigned int id, void* value,
                          const std::type_info* type) {
        return set(id, value, type);
    }
    virtual bool getString(unsigned int /*id*/, std::string& /*out*/) const { return false; }
    virtual bool setString(unsigned int /*id*/, const char* /*text*/) { return false; }
};

}  // namespace tavrin::base
