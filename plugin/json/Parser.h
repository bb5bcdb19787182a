#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <vector>
#include <typeinfo>

#include "base/Export.h"
#include "json/JsonNode.h"

namespace tavrin::plugin::json {

// One-pass recursive-descent reader of the plug-in's JSON dialect over a
// borrowed NUL-terminated text (the caller keeps it alive and unchanged while
// the parser is used). Every Parse* operation returns a newly allocated Node
// that the caller owns and must delete: holding the value on success, empty
// on failure (after one red log line saying why). Never returns null and
// never throws on bad text.
class TAVRIN_PLUGIN_API Parser {
public:
    // Arrays and objects nested deeper than this fail with a log line of
    // their own (" nesting deeper than 256 levels, please check string
    // format!"). The bound keeps parsing, and copying, assigning, destroying
    // and serializing the deepest admitted tree, well inside a 256 KiB thread
    // stack, address-sanitizer builds included.
    static constexpr int kDefaultMaxDepth = 256;

    Parser();
    explicit Parser(const char* text);
    Parser(const Parser& other);
    Parser& operator=(const Parser& other);
    ~Parser();

    // Cursor. GetNextChar returns the next character as a code 0-255; at the
    // end of the text it returns 0 (and logs on every read past it). Texts
    // are read up to their first NUL, and at most 2^31 - 1 characters.
    int GetNextChar();
    void Retract();
    void Concat();
    void SkipSpaces();
    bool ParseSpecific(const char* word);
    bool EOL() const;

    // The held type of the next value, or null (after a log line) when no
    // kind is recognised. Leaves the cursor where it was.
    const std::type_info* TypeDetect();

    // ParseValue refuses a first value that is not an array or an object
    // (the top-level rule), also when a container reader called directly on
    // a fresh parser asks it for its first element.
    Node* ParseValue();
    Node* ParseString();
    Node* ParseInt64();
    Node* ParseDouble();
    Node* ParseBool();
    Node* ParseFraction();
    Node* ParseArray();
    Node* ParseObject();

    // Nesting bound of this parser (arrays and objects inside each other;
    // the top-level container is level 1). Values below 1 are taken as 1.
    void SetMaxDepth(int depth);
    int MaxDepth() const { return _maxDepth; }

    // Where the parser gave up, after a Parse* operation returned an empty
    // Node: the offset in the text of the first character it could not
    // accept. That is the character whose read failed (the end of the text,
    // offset = its length, when it ran out), or, when the parser gave up on
    // the next value before reading into it, that value's first character: a
    // character that starts no value, a top-level value that is no array or
    // object, an array or object nested beyond the bound. Meaningless while
    // nothing has failed.
    int FailureOffset() const;

    const char* _text;
    int _pos;
    char _token;
    std::string _buffer;
    bool _first;

private:
    // Set when the parser gave up on the character after _pos, which it had
    // stepped back from. The five members above keep their order and
    // offsets; this one and those below make a Parser larger than they take
    // on their own.
    bool _failedAhead;
    // The kind of the number starting at _pos, by look-ahead.
    const std::type_info* NumberKind();

    enum class IntegerPart { kRead, kNoDigit, kDigitAfterZero };
    // Reads an optional "-" and an integer part ("0", or a digit 1-9 and
    // any digits) into a fresh _buffer, then one more character, which is
    // current (in _token) afterwards. Logs nothing: the number readers log
    // their own messages for the two failures.
    IntegerPart ReadIntegerPart();

    int _maxDepth;
    // Number of arrays and objects being read around the cursor.
    int _depth;
    // Look-ahead cache of TypeDetect: the last number scan ran over
    // _classifiedText from _classifiedFrom to the classifying character
    // _classifier at _classifiedUpTo (the terminator when there was none).
    // Every number starting in that stretch meets the same character first.
    // Empty (_classifiedUpTo < _classifiedFrom) before the first scan.
    const char* _classifiedText;
    std::ptrdiff_t _classifiedFrom;
    std::ptrdiff_t _classifiedUpTo;
    char _classifier;
    // Elements and members of the containers being read, one container per
    // nesting level, kept from container to container: they gather here and
    // then move once into a container of exactly their number.
    std::deque<std::vector<Node>> _arrayScratch;
    std::deque<tavrin::base::HashTable<std::string, Node>> _objectScratch;
};

}  // namespace tavrin::plugin::json
