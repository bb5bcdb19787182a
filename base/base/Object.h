#pragma once

#include <cstdint>
#include <string>

#include "base/Arr32.h"
#include "base/AttrSet.h"
#include "base/Export.h"
#include "base/Hash.h"
#include "base/IParam.h"
#include "base/ObjectBase.h"
#include "base/ostream.h"

namespace tavrin::base {

class Message;
class object;

// A named object: the name text and its case-folding hash as the id.
class object_name : public object_base {
public:
    virtual ~object_name() {}
    // Takes `s` whole as the name (null is not accepted) and its Hash as the id.
    virtual bool Name(const char* s) {
        _name = s;
        _id = Hash(s);
        return true;
    }
    virtual std::uint32_t ID() const { return _id; }
    virtual std::uint32_t Order() const { return _id; }

    const std::string& GetName() const { return _name; }

protected:
    std::string _name;
    std::uint32_t _id = 0;
};

// A named object with keywords: the hashes of the '-'-separated parts of its
// name, kept in an inline buffer of eight entries (more move to the heap).
class object_keywords : public object_name {
public:
    object_keywords() : _keywords(_keywordStorage, kInlineKeywords, true) {}
    ~object_keywords() override {}
    object_keywords(const object_keywords&) = delete;
    object_keywords& operator=(const object_keywords&) = delete;

    // A null name changes nothing (and succeeds).
    bool Name(const char* s) override {
        if (s == nullptr) return true;
        _name = s;
        _id = Hash(s);
        _keywords.Clear();
        _keywords.Add(s, '-');
        return true;
    }

    const Arr32& Keywords() const { return _keywords; }

protected:
    static constexpr int kInlineKeywords = 8;
    Arr32 _keywords;
    std::uint32_t _keywordStorage[kInlineKeywords];
};

// Conversion of an object to and from attribute sets and their text form.
class IAttributes {
public:
    virtual ~IAttributes() {}
    virtual bool toAttrSet(AttrSet& set) const = 0;
    virtual bool fromAttrSet(const AttrSet& set) = 0;
    // Always true: the text of whatever toAttrSet left in the set.
    virtual bool toString(std::string& out) const {
        AttrSet set;
        toAttrSet(set);
        std::string text = set.ToString(false);
        out.swap(text);
        return true;
    }
    virtual bool fromString(const char* text) { return fromAttrSet(AttrSet(text)); }
};

class IMessageReceiver {
public:
    virtual ~IMessageReceiver() {}
    virtual bool ReceiveMessage(Message& message, object* sender) = 0;
};

// The framework's named object. Its constructor from a name, its destructor,
// its run-time type record and its virtual table are the host's.
class TAVRIN_HOST_API object : public IParam,
                               public IAttributes,
                               public IMessageReceiver,
                               public object_keywords {
public:
    explicit object(const char* name);
    // Copies name, id, keywords and the enabled flag; nothing else.
    object(const object& other)
        : IParam(), IAttributes(), IMessageReceiver(), object_keywords(), _enabled(other._enabled) {
        _name = other._name;
        _id = other._id;
        for (std::uint32_t keyword : other._keywords) _keywords.Add(keyword, false);
    }
    object& operator=(const object&) = delete;

    ~object() override;
    // Writes the object's name.
    virtual ostream& operator>>(ostream& os) const;
    virtual object* getObject(unsigned int /*id*/) const { return nullptr; }
    virtual bool setObject(unsigned int /*id*/, object* /*child*/) { return false; }
    bool fromAttrSet(const AttrSet& set) override;
    bool toAttrSet(AttrSet& set) const override;
    bool ReceiveMessage(Message& message, object* sender) override;
    // A copy made with object_base's operators, or null when the run-time
    // type is a class that does not provide its own Clone.
    virtual object* Clone() const;
    virtual bool configure(AttrSet& /*set*/) { return true; }

    // The flag: whether the object takes part in its owner's work. New
    // objects are enabled; the substitute host does not interpret it further.
    bool Enabled() const { return _enabled; }
    void Enable(bool enabled) { _enabled = enabled; }

private:
    bool _enabled;
};

}  // namespace tavrin::base
