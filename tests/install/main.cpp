// consumer [TEXT]: parses TEXT (or a small built-in document) with the
// installed plug-in and prints it serialized; exit status 1 when the text is
// refused.
#include <cstdio>

#include "json/JsonNode.h"

int main(int argc, char** argv) {
    const char* text = argc > 1 ? argv[1]
                                : "{ \"name\": \"consumer\", \"sizes\": [1, 2, 3],"
                                  " \"ratio\": 16/9, \"on\": true }";
    tavrin::plugin::json::Node document;
    if (!document.Deserialize(text)) return 1;
    std::printf("%s\n", document.Serialize().c_str());
    return 0;
}
