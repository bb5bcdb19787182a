#pragma once

#include <clocale>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

namespace tavrin::test {

// Sets the process locale to one whose decimal point is a comma for as long
// as it lives: an installed one, or else one made with localedef in a
// temporary folder (named through LOCPATH) that goes with it.
class DecimalCommaLocale {
public:
    DecimalCommaLocale() : _previous(std::setlocale(LC_ALL, nullptr)) {
        for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "fr_FR.utf8"})
            if (Use(name)) return;
        std::string folder = (std::filesystem::temp_directory_path() / "tavrin-locale-XXXXXX").string();
        if (mkdtemp(folder.data()) == nullptr) return;
        _folder = folder;
        std::ofstream(folder + "/comma.def") << "LC_NUMERIC\ndecimal_point \",\"\nthousands_sep \".\"\ngrouping 3\n"
                                                "END LC_NUMERIC\n";
        const std::string command = "localedef -c -i '" + folder + "/comma.def' -f ANSI_X3.4-1968 '" + folder +
                                    "/tavrin_comma' >/dev/null 2>&1";
        if (std::system(command.c_str()) >= 0 && setenv("LOCPATH", folder.c_str(), 1) == 0) Use("tavrin_comma");
    }
    ~DecimalCommaLocale() {
        std::setlocale(LC_ALL, _previous.c_str());
        if (!_folder.empty()) std::filesystem::remove_all(_folder);
    }
    DecimalCommaLocale(const DecimalCommaLocale&) = delete;
    DecimalCommaLocale& operator=(const DecimalCommaLocale&) = delete;

    bool Active() const { return _active; }

private:
    bool Use(const char* name) {
        _active = std::setlocale(LC_ALL, name) != nullptr && std::strcmp(std::localeconv()->decimal_point, ",") == 0;
        return _active;
    }

    std::string _previous;
    std::string _folder;
    bool _active = false;
};

}  // namespace tavrin::test
