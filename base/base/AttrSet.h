#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "base/Export.h"

namespace tavrin::base {

// The framework's attribute set: text keys with text values, in the order
// they were added, with a single-line text form (see ToString).
class TAVRIN_HOST_API AttrSet {
public:
    AttrSet();
    // Reads the text form written by ToString(false). Malformed text is read
    // as far as it is well formed; the rest is ignored.
    explicit AttrSet(const char* text);
    AttrSet(const AttrSet&);
    AttrSet& operator=(const AttrSet&);
    ~AttrSet();

    // Stores a copy of the pair. A key already present (exact text) keeps its
    // place and takes the new value. A null key is refused (false); a null
    // value is stored as an empty text.
    bool Add(const char* key, const char* value);

    // The key's value text, or null when the key is absent. The pointer stays
    // valid until the entry is changed or the set is destroyed.
    const char* Get(const char* key) const;

    // The value text of the entry at that position, or null when there is
    // none.
    const char* Value(int index) const;

    // Key text of the entry at that position, or null.
    const char* Key(int index) const;

    std::size_t Size() const;

    // The single-line text form "{k1=v1,k2=v2}" ("{}" when empty). With
    // `pretty` a host may write a form for people to read; this one breaks the
    // line after each comma between pairs, so that a plug-in asking for it
    // shows in its texts. Texts are written as they are, except that at
    // the outermost level of a text "%", ",", "=" are written as "%25",
    // "%2C", "%3D", and so are "{" and "}" ("%7B", "%7D") unless all braces of
    // the text pair up, so nested set texts appear unchanged.
    std::string ToString(bool pretty) const;

private:
    std::vector<std::pair<std::string, std::string>> _entries;
    std::unordered_map<std::string, std::size_t> _index;
};

}  // namespace tavrin::base
