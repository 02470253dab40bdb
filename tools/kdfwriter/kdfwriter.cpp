// kdfwriter: builds keyboard definition files (.kdf) from a text description, for the sample
// keyboards and for tests. The module itself only reads .kdf files.
//
//   kdfwriter DESCRIPTION OUTPUT.kdf        write the file
//   kdfwriter --check DESCRIPTION FILE.kdf  exit 0 when FILE.kdf is exactly what DESCRIPTION gives
//   kdfwriter --dump FILE.kdf NAME          read keyboard NAME back with the module's reader
//
// Description format. One statement a line; blanks separate words; "#" starts a comment; a word
// in double quotes may hold blanks, "#", and \" or \\. Text is UTF-8 and must fit the narrow
// (Latin-1) character set that the file holds. Numbers are decimal or 0x hexadecimal, or key
// units written with "u" (1.25u is 1.25 times the pitch) where a position or size is meant.
//
//   keyboard NAME [BLOCKNAME]   a keyboard: NAME in the directory, BLOCKNAME stored in its block
//                               (default NAME). A file may hold several keyboards.
//   layout NAME [like OTHER]    a layout of the current keyboard; "like" starts it as a copy of the
//                               keys, key unit and value2 of an earlier layout, to be changed by "set"
//   text1 TEXT, text2 TEXT, text3 TEXT   the layout's descriptive texts
//   keyunit N                   key unit: the size from which label fonts are derived
//   value2 N                    the layout's second number
//   attribute N TEXT            an attribute (N 0 to 255)
//   pitch N                     layout units in one "u" (default 1)
//   gap N                       taken off each following key's width and height, so that key
//                               faces stand apart while positions follow the pitch
//   origin X Y                  added to every following row, "at" and x=/y= position
//   row Y [H]                   a row at Y: the cursor goes back to the origin's x; H is the
//                               default key height of the row (default 1u)
//   at X / skip DX              set / advance the cursor
//   active STATES               shift states that following keys have active (default all);
//                               the others are marked inactive
//   key CODE [@TAG] [OPTION...] [LABEL...] [| ALTLABEL...]
//                               a key at the cursor; the cursor moves on by its width
//   set @TAG [OPTION...] [LABEL...] [| ALTLABEL...]
//                               changes a key that "like" copied; given labels replace all
//
// OPTIONs: w=N h=N (size, default 1u and the row's height), x=N y=N (position instead of the
// cursor), code=N (set only), mask=N (modifier mask), alt=CODE (the toggled code, which adds the
// second shift table), value=N (key value), shiftvalue=N, off=STATES on=STATES (inactive or active
// states of the first table), altoff=STATES alton=STATES (of the second). STATES: "0-7", "0,1,4",
// "all", "none". A tag names a key for "set"; it does not go into the file.
//
// LABELs are those of states 0 to 7 (0 plain, 1 Shift, 2 Ctrl, 3 Ctrl+Shift, 4 Alt, 5 Alt+Shift,
// 6 Alt+Ctrl, 7 all three). A state that is not given (or given as a bare ~) takes the label of
// the state with only its Shift bit, or else of state 0: "a A" labels all eight states. The labels
// after "|" are those of the toggled table, which otherwise copies the first. Every state's code
// is the key's code (the toggled table's, its alternative code). Equal neighbouring states are
// written as one run.
#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>

#include "kdfdesc.h"
#include "keyboard/kdf.h"
#include "text/textutil.h"

namespace {

// .kdf text is narrow; the terminal wants UTF-8.
std::string shown(const std::string& narrow) { return qrl::utf16ToUtf8(qrl::latin1ToUtf16(narrow)); }

bool readText(const char* path, std::string& text) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        return false;
    }
    std::ostringstream buffer;
    buffer << in.rdbuf();
    text = buffer.str();
    return true;
}

bool build(const char* description, std::vector<unsigned char>& bytes) {
    std::string text;
    if (!readText(description, text)) {
        std::cerr << description << ": cannot be read\n";
        return false;
    }
    kdfw::Description parsed;
    std::string error;
    if (!kdfw::parseDescription(text, parsed, error) ||
        !kdfw::encodeDescription(parsed, bytes, error)) {
        std::cerr << description << ": " << error << "\n";
        return false;
    }
    return true;
}

const char* resultText(int result) {
    switch (result) {
        case qrl::kKdfShortRead: return "a read came up short";
        case qrl::kKdfBadMagic: return "not a keyboard definition file";
        case qrl::kKdfBadVersion: return "wrong version";
        case qrl::kKdfNoKeyboard: return "no keyboard of that name";
        default: return "unknown result";
    }
}

int dump(const char* path, const char* name) {
    std::FILE* file = std::fopen(path, "rb");
    if (file == nullptr) {
        std::cerr << path << ": cannot be opened\n";
        return 1;
    }
    qrl::KbHdr header;
    qrl::KbKeyboard keyboard;
    const int result = qrl::readKeyboard(header, file, name, keyboard);
    std::fclose(file);
    if (result != qrl::kKdfOk) {
        std::cerr << path << ": " << result << " (" << resultText(result) << ")\n";
        return 1;
    }
    std::cout << "keyboard \"" << shown(keyboard.Name) << "\": " << keyboard.Layouts.size() << " layouts\n";
    for (const qrl::KbLayout& layout : keyboard.Layouts) {
        std::cout << "layout \"" << shown(layout.Name) << "\" key unit " << layout.KeyUnit << ", "
                  << layout.Keys.size() << " keys\n";
        for (const qrl::KbKey& key : layout.Keys) {
            std::cout << "  " << key.Code << " at " << key.X << "," << key.Y << " size " << key.Width
                      << "x" << key.Height;
            if (key.ModifierMask != 0) {
                std::cout << " mask " << key.ModifierMask;
            }
            if (key.AltCode != 0) {
                std::cout << " alt " << key.AltCode;
            }
            std::cout << ":";  // inactive states are marked with "-"
            for (const qrl::KbKeyShift& shift : key.Shifts) {
                std::cout << " \"" << shown(shift.Label) << "\"" << (shift.Inactive ? "-" : "");
            }
            if (key.AltCode != 0) {
                std::cout << " |";
                for (const qrl::KbKeyShift& shift : key.AltShifts) {
                    std::cout << " \"" << shown(shift.Label) << "\"" << (shift.Inactive ? "-" : "");
                }
            }
            std::cout << "\n";
        }
    }
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    const std::string mode = argc > 1 ? argv[1] : "";
    if (argc == 4 && mode == "--dump") {
        return dump(argv[2], argv[3]);
    }
    if (argc == 4 && mode == "--check") {
        std::vector<unsigned char> bytes;
        std::string existing;
        if (!build(argv[2], bytes)) {
            return 2;
        }
        if (!readText(argv[3], existing)) {
            std::cerr << argv[3] << ": cannot be read\n";
            return 2;
        }
        if (existing.size() != bytes.size() ||
            !std::equal(bytes.begin(), bytes.end(), existing.begin(),
                        [](unsigned char a, char b) { return a == static_cast<unsigned char>(b); })) {
            std::cerr << argv[3] << " differs from what " << argv[2] << " describes\n";
            return 1;
        }
        return 0;
    }
    if (argc == 3 && mode.rfind("--", 0) != 0) {
        std::vector<unsigned char> bytes;
        if (!build(argv[1], bytes)) {
            return 2;
        }
        std::ofstream out(argv[2], std::ios::binary | std::ios::trunc);
        out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        if (!out) {
            std::cerr << argv[2] << ": cannot be written\n";
            return 2;
        }
        return 0;
    }
    std::cerr << "usage: kdfwriter DESCRIPTION OUTPUT.kdf\n"
                 "       kdfwriter --check DESCRIPTION FILE.kdf\n"
                 "       kdfwriter --dump FILE.kdf NAME\n";
    return 2;
}
