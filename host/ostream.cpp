#include "base/ostream.h"

#include <charconv>
#include <cstdio>

namespace tavrin::base {

ostream::~ostream() = default;

namespace {

template <class Integer>
void AppendDecimal(std::string& out, Integer v) {
    char digits[24];
    const auto result = std::to_chars(digits, digits + sizeof digits, v);
    out.append(digits, result.ptr);
}

// The log stream the host starts with: every insertion goes straight to
// standard error.
class StderrStream final : public ostream {
public:
    ostream& operator<<(char c) override {
        std::fputc(static_cast<unsigned char>(c), stderr);
        return *this;
    }
    ostream& operator<<(int v) override { return Write(v); }
    ostream& operator<<(long long v) override { return Write(v); }
    ostream& operator<<(std::uint32_t count) override { return Write(count); }
    ostream& operator<<(const char* text) override {
        if (text != nullptr) std::fputs(text, stderr);
        return *this;
    }

private:
    template <class Integer>
    ostream& Write(Integer v) {
        std::string text;
        AppendDecimal(text, v);
        std::fputs(text.c_str(), stderr);
        return *this;
    }
};

StderrStream gStderrStream;

}  // namespace

ostream* cout = &gStderrStream;

ostream_string::ostream_string(std::string& target) : _target(&target) {}
ostream_string::ostream_string(int /*unused*/) : _target(&_own) {}
ostream_string::~ostream_string() = default;

ostream& ostream_string::operator<<(char c) {
    _target->push_back(c);
    return *this;
}
ostream& ostream_string::operator<<(int v) {
    AppendDecimal(*_target, v);
    return *this;
}
ostream& ostream_string::operator<<(long long v) {
    AppendDecimal(*_target, v);
    return *this;
}
ostream& ostream_string::operator<<(std::uint32_t count) {
    AppendDecimal(*_target, count);
    return *this;
}
ostream& ostream_string::operator<<(const char* text) {
    if (text != nullptr) _target->append(text);
    return *this;
}

}  // namespace tavrin::base
