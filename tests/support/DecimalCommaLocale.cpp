#include "support/DecimalCommaLocale.h"

#include <clocale>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>

namespace tavrin::test {

DecimalCommaLocale::DecimalCommaLocale() : _previous(std::setlocale(LC_ALL, nullptr)) {
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "fr_FR.utf8"})
        if (Use(name)) return;
    if (MakeOwn()) Use("tavrin_comma");
}

DecimalCommaLocale::~DecimalCommaLocale() {
    std::setlocale(LC_ALL, _previous.c_str());
    if (!_folder.empty()) std::filesystem::remove_all(_folder);
}

bool DecimalCommaLocale::Use(const char* name) {
    _active = std::setlocale(LC_ALL, name) != nullptr &&
              std::strcmp(std::localeconv()->decimal_point, ",") == 0;
    return _active;
}

bool DecimalCommaLocale::MakeOwn() {
    std::string pattern = (std::filesystem::temp_directory_path() / "tavrin-locale-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) return false;
    _folder = pattern;
    const std::string source = _folder + "/tavrin_comma.def";
    std::ofstream(source) << "LC_NUMERIC\ndecimal_point \",\"\nthousands_sep \".\"\n"
                             "grouping 3\nEND LC_NUMERIC\n";
    const std::string command = "localedef -c -i '" + source + "' -f ANSI_X3.4-1968 '" + _folder +
                                "/tavrin_comma' >/dev/null 2>&1";
    (void)std::system(command.c_str());
    return setenv("LOCPATH", _folder.c_str(), 1) == 0;
}

}  // namespace tavrin::test
