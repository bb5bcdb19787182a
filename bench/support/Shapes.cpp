#include "support/Shapes.h"

#include <cstdint>

namespace tavrin::bench {

namespace {

// A fixed linear congruential sequence: the same texts on every run.
class Sequence {
public:
    std::uint32_t Next() {
        _state = _state * 6364136223846793005ULL + 1442695040888963407ULL;
        return static_cast<std::uint32_t>(_state >> 33);
    }
    long long Integer() {
        const long long magnitude = Next() % 2000000000LL;
        return Next() % 4 == 0 ? -magnitude : magnitude;
    }

private:
    std::uint64_t _state = 88172645463325252ULL;
};

// Opens with `open`, writes `n` items with `item(i)` between commas, closes.
template <class Item>
std::string Joined(char open, std::size_t n, char close, Item item) {
    std::string text(1, open);
    for (std::size_t i = 0; i < n; ++i) {
        if (i != 0) text += ',';
        item(text, i);
    }
    text += close;
    return text;
}

}  // namespace

std::string IntArray(std::size_t n) {
    Sequence seq;
    return Joined('[', n, ']', [&](std::string& text, std::size_t) {
        text += std::to_string(seq.Integer());
    });
}

std::string DoubleArray(std::size_t n) {
    Sequence seq;
    return Joined('[', n, ']', [&](std::string& text, std::size_t i) {
        text += std::to_string(seq.Integer() % 100000);
        text += '.';
        text += std::to_string(seq.Next() % 1000000);
        if (i % 8 == 7) text += "e-" + std::to_string(seq.Next() % 20);
    });
}

std::string WideObject(std::size_t n) {
    Sequence seq;
    return Joined('{', n, '}', [&](std::string& text, std::size_t i) {
        text += "\"k" + std::to_string(i) + "\":";
        if (i % 2 == 0)
            text += std::to_string(seq.Next() % 100000);
        else
            text += "\"v" + std::to_string(seq.Next()) + "\"";
    });
}

std::string DeepNesting(std::size_t depth) {
    std::string text;
    for (std::size_t i = 0; i < depth; ++i)
        text += "{\"i\":" + std::to_string(i) + ",\"s\":\"level\",\"next\":";
    text += "[]";
    text.append(depth, '}');
    return text;
}

std::string LongString(std::size_t n) {
    std::string body;
    body.reserve(n);
    while (body.size() < n) body += body.size() % 64 == 62 ? "\\n" : "x";
    body.resize(n);
    if (body.back() == '\\') body.back() = 'y';
    return "[\"" + body + "\"]";
}

std::string RecordArray(std::size_t n) {
    Sequence seq;
    return Joined('[', n, ']', [&](std::string& text, std::size_t i) {
        text += "{\"id\":" + std::to_string(i) + ",\"name\":\"user" + std::to_string(seq.Next()) +
                "\",\"active\":" + (seq.Next() % 2 ? "true" : "false") +
                ",\"score\":" + std::to_string(seq.Integer()) + ",\"tags\":[\"t" +
                std::to_string(seq.Next() % 50) + "\",\"t" + std::to_string(seq.Next() % 50) +
                "\"]}";
    });
}

std::string RingArray(std::size_t n) {
    Sequence seq;
    return Joined('[', n, ']', [&](std::string& text, std::size_t) {
        text += Joined('[', 4 + seq.Next() % 37, ']', [&](std::string& ring, std::size_t) {
            ring += "[" + std::to_string(seq.Integer()) + "," + std::to_string(seq.Integer()) + "]";
        });
    });
}

}  // namespace tavrin::bench
