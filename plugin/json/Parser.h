#pragma once

#include <string>
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
    // Containers nested deeper than this fail with a log line of their own.
    static constexpr int kDefaultMaxDepth = 512;

    Parser();
    explicit Parser(const char* text);
    Parser(const Parser& other);
    Parser& operator=(const Parser& other);
    ~Parser();

    // Cursor. GetNextChar returns the next character as a code 0-255; at the
    // end of the text it returns 0 (and logs on every read past it).
    int GetNextChar();
    void Retract();
    void Concat();
    void SkipSpaces();
    bool ParseSpecific(const char* word);
    bool EOL() const;

    // The held type of the next value, or null when no kind is recognised.
    const std::type_info* TypeDetect();

    Node* ParseValue();
    Node* ParseString();
    Node* ParseInt64();
    Node* ParseDouble();
    Node* ParseBool();
    Node* ParseFraction();
    Node* ParseArray();
    Node* ParseObject();

    // Nesting bound of this parser (arrays and objects inside each other).
    // Values below 1 are taken as 1.
    void SetMaxDepth(int depth);
    int MaxDepth() const { return _maxDepth; }

    const char* _text;
    int _pos;
    char _token;
    std::string _buffer;
    bool _first;

private:
    int _maxDepth;
    int _depth;
    // Look-ahead cache of TypeDetect: the position of the classifying
    // character found by the last number scan (-1 when none yet). Every
    // number starting at or before it is classified by that character.
    int _classifiedUpTo;
    char _classifier;
};

}  // namespace tavrin::plugin::json
