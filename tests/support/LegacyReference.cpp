#include "support/LegacyReference.h"

#include <cctype>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <deque>
#include <strings.h>

#include "json/legacy/Deserialize.h"

namespace tavrin::test {

namespace {

using Stack = std::deque<json::StackDepthType>;

json::Value ContainerOf(const std::string& text, Stack& stack);
json::Value ArrayOf(const std::string& text, Stack& stack);
json::Value ValueOf(std::string& text, bool& error, Stack& stack);

bool Space(char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; }

std::string Trim(const std::string& text) {
    std::size_t begin = 0;
    while (begin < text.size() && Space(text[begin])) ++begin;
    std::size_t end = text.size();
    while (end > begin && Space(text[end - 1])) --end;
    return text.substr(begin, end - begin);
}

int ClosingQuote(const std::string& text, std::size_t start) {
    bool escaped = false;
    for (std::size_t i = start; i < text.size(); ++i) {
        if (text[i] == '\\' && !escaped) {
            escaped = true;
        } else if (text[i] == '"' && !escaped) {
            return static_cast<int>(i);
        } else {
            escaped = false;
        }
    }
    return -1;
}

int MatchingBracket(const std::string& text, Stack& stack) {
    const std::size_t base = stack.size();
    bool inString = false;
    for (std::size_t i = 1; i < text.size(); ++i) {
        if (text[i] == '"' && text[i - 1] != '\\') {
            inString = !inString;
        } else if (inString) {
            continue;
        } else if (text[i] == '[') {
            stack.push_back(json::ArrayDepth);
        } else if (text[i] == '{') {
            stack.push_back(json::ObjectDepth);
        } else if (text[i] == ']' || text[i] == '}') {
            const json::StackDepthType need = text[i] == ']' ? json::ArrayDepth : json::ObjectDepth;
            if (stack.back() != need) return -1;
            const std::size_t size = stack.size();
            stack.pop_back();
            if (size == base) return static_cast<int>(i);
        }
    }
    return -1;
}

bool Balanced(const std::string& s) {
    int counts[6] = {0, 0, 0, 0, 0, 0};
    const std::string marks = "{}[]'\"";
    for (char c : s) {
        const std::size_t at = marks.find(c);
        if (at != std::string::npos) ++counts[at];
    }
    return counts[0] == counts[1] && counts[2] == counts[3] && counts[4] % 2 == 0 &&
           counts[5] % 2 == 0;
}

json::Value ObjectOf(const std::string& s, Stack& stack) {
    stack.push_back(json::ObjectDepth);
    json::Object object;
    std::string body = s.substr(1, s.size() - 2);
    while (!body.empty()) {
        const int open = ClosingQuote(body, 0);
        if (open < 0) return json::Value();
        const int close = ClosingQuote(body, static_cast<std::size_t>(open) + 1);
        if (close < 0) return json::Value();
        const std::size_t colon = body.find(':', static_cast<std::size_t>(close));
        if (colon == std::string::npos) return json::Value();
        const std::string key = body.substr(open + 1, close - open - 1);
        if (key.empty()) return json::Value();
        body = body.substr(colon + 1);
        json::Value& entry = object[key];
        bool error = false;
        entry = ValueOf(body, error, stack);
        if (error) return json::Value();
    }
    json::Value result(object);
    if (!stack.empty() && stack.back() == json::ObjectDepth) stack.pop_back();
    return result;
}

json::Value ContainerOf(const std::string& text, Stack& stack) {
    const std::string s = Trim(text);
    if (!Balanced(s) || s.size() < 2) return json::Value();
    if (s.front() == '{' && s.back() == '}') return ObjectOf(s, stack);
    if (s.front() == '[' && s.back() == ']') {
        stack.push_back(json::ArrayDepth);
        json::Value result = ArrayOf(s, stack);
        if (result.GetType() != json::NullVal && !stack.empty() && stack.back() == json::ArrayDepth)
            stack.pop_back();
        return result;
    }
    return json::Value();
}

json::Value ArrayOf(const std::string& text, Stack& stack) {
    std::string rest = Trim(text);
    if (rest.size() < 2 || rest.front() != '[' || rest.back() != ']') return json::Value();
    rest = rest.substr(1, rest.size() - 2);
    json::Array array;
    while (!rest.empty()) {
        std::string piece;
        for (std::size_t i = 0; i < rest.size(); ++i) {
            const char c = rest[i];
            bool error = false;
            if (c == '{' || c == '[') {
                json::Value v = ValueOf(rest, error, stack);
                if (error) return json::Value();
                if (v.GetType() != json::NullVal) array.push_back(v);
                break;
            }
            const bool last = i + 1 == rest.size();
            if (c != ',' && c != ']') piece += c;
            if (c == ',' || c == ']' || last) {
                json::Value v = ValueOf(piece, error, stack);
                if (error) return json::Value();
                if (v.GetType() != json::NullVal) array.push_back(v);
                rest = rest.substr(i + 1);
                break;
            }
        }
    }
    return json::Value(array);
}

char EscapeOf(char c) {
    switch (c) {
        case 'f': return '\f';
        case '/': return '/';
        case '"': return '"';
        case '\\': return '\\';
        case 'b': return '\b';
        case 'r': return '\r';
        case 'n': return '\n';
        case 't': return '\t';
        default: return 0;
    }
}

std::string Unescaped(const std::string& inner) {
    std::string out;
    for (std::size_t i = 0; i < inner.size(); ++i) {
        if (inner[i] != '\\' || i + 1 == inner.size()) {
            out += inner[i];
        } else if (inner[i + 1] == 'u') {
            const std::string digits = i + 4 <= inner.size() ? inner.substr(i + 4, 2) : "";
            out += static_cast<char>(std::strtoul(digits.c_str(), nullptr, 16) & 0xFF);
            i += 5;
        } else {
            if (EscapeOf(inner[i + 1]) != 0) out += EscapeOf(inner[i + 1]);
            ++i;
        }
    }
    return Trim(out);
}

json::Value StringOf(std::string& text, bool& error) {
    const int close = ClosingQuote(text, 1);
    if (close < 0) {
        error = true;
        return json::Value();
    }
    json::Value v(Unescaped(text.substr(1, close - 1)));
    text = text.substr(close + 1);
    return v;
}

json::Value Fail(bool& error) {
    error = true;
    return json::Value();
}

json::Value ScalarOf(std::string& text, bool& error, Stack& stack) {
    bool digit = false, slash = false, exponent = false;
    std::string token;
    std::size_t i = 0;
    for (; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '/') {
            slash = true;
            if (!digit) return Fail(error);
        } else if (c == '.') {
            if (!digit) return Fail(error);
        } else if (c == 'e' || c == 'E') {
            if (strcasecmp(token.c_str(), "fals") != 0 && strcasecmp(token.c_str(), "tru") != 0) {
                if (!digit || exponent) return Fail(error);
                exponent = true;
            }
        } else if (c == ']' || c == '}') {
            const json::StackDepthType need = c == ']' ? json::ArrayDepth : json::ObjectDepth;
            if (stack.empty() || stack.back() != need) return Fail(error);
            stack.pop_back();
        } else if (c == ',') {
            break;
        } else if (c == '[' || c == '{') {
            return Fail(error);
        }
        if (!Space(c)) {
            if (std::isdigit(static_cast<unsigned char>(c))) digit = true;
            token += c;
        }
    }
    text = text.substr(i);
    if (strcasecmp(token.c_str(), "true") == 0) return json::Value(true);
    if (strcasecmp(token.c_str(), "false") == 0) return json::Value(false);
    if (slash) {
        tavrin::base::Fraction f;
        f.From(token.c_str());
        return json::Value(f);
    }
    if (strcasecmp(token.c_str(), "null") == 0) return json::Value();
    char* end = nullptr;
    const long number = std::strtol(token.c_str(), &end, 10);
    if (*end != '\0') return Fail(error);
    const long clamped = number < INT_MIN ? INT_MIN : number > INT_MAX ? INT_MAX : number;
    return json::Value(static_cast<int>(clamped));
}

json::Value ValueOf(std::string& text, bool& error, Stack& stack) {
    error = false;
    text = Trim(text);
    if (text.empty()) return json::Value();
    if (text[0] == '[' || text[0] == '{') {
        stack.push_back(text[0] == '[' ? json::ArrayDepth : json::ObjectDepth);
        const int close = MatchingBracket(text, stack);
        if (close < 0) return Fail(error);
        const std::string span = text.substr(0, close + 1);
        text = text.substr(close + 1);
        return span[0] == '[' ? ArrayOf(span, stack) : ContainerOf(span, stack);
    }
    if (text[0] == '"') return StringOf(text, error);
    return ScalarOf(text, error, stack);
}

}  // namespace

json::Value ReferenceDeserialize(const std::string& text) {
    Stack stack;
    return ContainerOf(text, stack);
}

}  // namespace tavrin::test
