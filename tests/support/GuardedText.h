#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstring>
#include <new>
#include <string>

namespace tavrin::test {

// A copy of a text whose terminator is the last byte of a mapped page; the
// page after it allows no access. A reader that loads one byte past the
// terminator, in any build, crashes the test program.
class GuardedText {
public:
    explicit GuardedText(const std::string& text) {
        const std::size_t page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
        const std::size_t readable = (text.size() + 1 + page - 1) / page * page;
        _size = readable + page;
        void* map = mmap(nullptr, _size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (map == MAP_FAILED) throw std::bad_alloc();
        _map = static_cast<char*>(map);
        if (mprotect(_map + readable, page, PROT_NONE) != 0) {
            munmap(_map, _size);
            throw std::bad_alloc();
        }
        char* at = _map + readable - text.size() - 1;
        std::memcpy(at, text.c_str(), text.size() + 1);
        _text = at;
    }
    ~GuardedText() { munmap(_map, _size); }
    GuardedText(const GuardedText&) = delete;
    GuardedText& operator=(const GuardedText&) = delete;

    const char* c_str() const { return _text; }

private:
    char* _map;
    std::size_t _size;
    const char* _text;
};

}  // namespace tavrin::test
