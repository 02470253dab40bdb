// genrequest COUNT FILE [utf8|utf16]: writes a request with COUNT elements and data values.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>

#include "generate.h"

int main(int argc, char** argv) {
    if (argc < 3) {
        std::cerr << "usage: genrequest COUNT FILE [utf8|utf16]\n";
        return 2;
    }
    const long count = std::strtol(argv[1], nullptr, 10);
    if (count < 0) {
        std::cerr << "genrequest: COUNT must not be negative\n";
        return 2;
    }
    const bool wide = argc > 3 && std::strcmp(argv[3], "utf16") == 0;
    const std::u16string text = qrl::gen::MakeRequest(static_cast<std::size_t>(count));
    std::ofstream out(argv[2], std::ios::binary);
    if (wide) {
        out.put(static_cast<char>(0xFF)).put(static_cast<char>(0xFE));  // UTF-16LE with its mark
        for (char16_t c : text) out.put(static_cast<char>(c & 0xFF)).put(static_cast<char>(c >> 8));
    } else {
        out << qrl::utf16ToUtf8(text);
    }
    if (!out) {
        std::cerr << "genrequest: cannot write " << argv[2] << "\n";
        return 1;
    }
    return 0;
}
