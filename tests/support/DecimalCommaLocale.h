#pragma once

#include <string>

namespace tavrin::test {

// Sets the process locale to one whose decimal point is a comma for as long
// as it lives: an installed one, or else one made with localedef in a
// temporary folder (named through LOCPATH) that goes with it.
class DecimalCommaLocale {
public:
    DecimalCommaLocale();
    ~DecimalCommaLocale();
    DecimalCommaLocale(const DecimalCommaLocale&) = delete;
    DecimalCommaLocale& operator=(const DecimalCommaLocale&) = delete;

    bool Active() const { return _active; }

private:
    bool Use(const char* name);
    bool MakeOwn();

    std::string _previous;
    std::string _folder;
    bool _active = false;
};

}  // namespace tavrin::test
