#pragma once

#include <cstdint>
#include <string>

#include "base/Export.h"

namespace tavrin::base {

// The framework's abstract output stream. The five insertions below are the
// ones the plug-in uses, in the host's slot order; each returns the stream so
// insertions chain.
class TAVRIN_HOST_API ostream {
public:
    virtual ostream& operator<<(char c) = 0;
    virtual ostream& operator<<(int v) = 0;
    virtual ostream& operator<<(long long v) = 0;
    virtual ostream& operator<<(std::uint32_t count) = 0;
    virtual ostream& operator<<(const char* text) = 0;
    virtual ~ostream();

    // Header piece: a string goes through the text insertion.
    ostream& operator<<(const std::string& s) { return *this << s.c_str(); }
};

// An ostream that appends to a std::string: either one the caller owns
// (ostream_string(std::string&)) or one of its own (ostream_string(int),
// read back with str()).
class TAVRIN_HOST_API ostream_string : public ostream {
public:
    explicit ostream_string(std::string& target);
    explicit ostream_string(int unused);
    ~ostream_string() override;
    ostream_string(const ostream_string&) = delete;
    ostream_string& operator=(const ostream_string&) = delete;

    using ostream::operator<<;
    ostream& operator<<(char c) override;
    ostream& operator<<(int v) override;
    ostream& operator<<(long long v) override;
    ostream& operator<<(std::uint32_t count) override;
    ostream& operator<<(const char* text) override;

    // The text written so far.
    const std::string& str() const { return *_target; }
    std::string& str() { return *_target; }

private:
    std::string _own;
    std::string* _target;
};

// The framework's log stream. Loaded afresh for every log line, so a caller
// may point it at a stream of its own (and must restore it afterwards).
extern TAVRIN_HOST_API ostream* cout;

}  // namespace tavrin::base
