// Reading the writer's text description (the format is described in kdfwriter.cpp).
#include <cmath>
#include <cstdlib>
#include <map>
#include <optional>
#include <sstream>

#include "kdfdesc.h"
#include "text/textutil.h"

namespace kdfw {

namespace {

struct Token {
    std::string text;
    bool quoted = false;
};

struct ParseError {
    std::string message;
};

[[noreturn]] void fail(const std::string& message) { throw ParseError{message}; }

std::vector<Token> tokenize(const std::string& line) {
    std::vector<Token> tokens;
    std::size_t i = 0;
    while (i < line.size()) {
        const char c = line[i];
        if (c == ' ' || c == '\t' || c == '\r') {
            ++i;
            continue;
        }
        if (c == '#') {
            break;
        }
        Token token;
        if (c == '"') {
            token.quoted = true;
            ++i;
            bool closed = false;
            while (i < line.size()) {
                const char d = line[i++];
                if (d == '"') {
                    closed = true;
                    break;
                }
                if (d == '\\' && i < line.size()) {
                    token.text += line[i++];
                } else {
                    token.text += d;
                }
            }
            if (!closed) {
                fail("unterminated quoted text");
            }
        } else {
            while (i < line.size() && line[i] != ' ' && line[i] != '\t' && line[i] != '\r') {
                token.text += line[i++];
            }
        }
        tokens.push_back(std::move(token));
    }
    return tokens;
}

// Description text is UTF-8; the file holds narrow text, one byte a character.
std::string toNarrow(const std::string& utf8) {
    const std::u16string wide = qrl::utf8ToUtf16(utf8);
    for (char16_t c : wide) {
        if (c > 0xFF) {
            fail("text \"" + utf8 + "\" has a character outside the narrow character set");
        }
    }
    return qrl::utf16ToLatin1(wide);
}

class Parser {
public:
    explicit Parser(Description& out) : out_(out) {}
    void line(const std::vector<Token>& tokens);
    void finish() {}

private:
    int number(const std::string& text) const;
    int number16(const std::string& text, const char* what) const;
    std::array<bool, 8> states(const std::string& text) const;
    Keyboard& keyboard();
    Layout& layout();
    void need(const std::vector<Token>& t, std::size_t min, std::size_t max, const char* usage) const;
    void keyLine(const std::vector<Token>& t, bool isSet);

    Description& out_;
    int pitch_ = 1;
    int gap_ = 0;
    int originX_ = 0, originY_ = 0;
    int rowY_ = 0, rowHeight_ = 1, cursorX_ = 0;
    bool rowHeightSet_ = false;
    std::array<bool, 8> active_{true, true, true, true, true, true, true, true};
};

// Decimal, 0x hexadecimal, or a multiple of the pitch written with "u" ("1.25u").
int Parser::number(const std::string& text) const {
    if (text.empty()) {
        fail("a number is missing");
    }
    if (text.back() == 'u') {
        char* end = nullptr;
        const std::string body = text.substr(0, text.size() - 1);
        const double units = std::strtod(body.c_str(), &end);
        if (body.empty() || *end != '\0') {
            fail("bad number \"" + text + "\"");
        }
        const double value = units * pitch_;
        if (std::fabs(value - std::round(value)) > 1e-9 || std::fabs(value) > 1e9) {
            fail("\"" + text + "\" is not a whole number of layout units at pitch " +
                 std::to_string(pitch_));
        }
        return static_cast<int>(std::lround(value));
    }
    char* end = nullptr;
    const long value = std::strtol(text.c_str(), &end, 0);
    if (*end != '\0' || value < -1000000000L || value > 1000000000L) {
        fail("bad number \"" + text + "\"");
    }
    return static_cast<int>(value);
}

int Parser::number16(const std::string& text, const char* what) const {
    const int value = number(text);
    if (value < -32768 || value > 65535) {
        fail(std::string(what) + " " + text + " does not fit 16 bits");
    }
    return value;
}

// "0-7", "0,1,4-5", "all", "none".
std::array<bool, 8> Parser::states(const std::string& text) const {
    std::array<bool, 8> set{};
    if (text == "all") {
        set.fill(true);
        return set;
    }
    if (text == "none") {
        return set;
    }
    std::stringstream parts(text);
    std::string part;
    while (std::getline(parts, part, ',')) {
        const auto dash = part.find('-');
        const std::string first = part.substr(0, dash);
        const std::string last = dash == std::string::npos ? first : part.substr(dash + 1);
        if (first.size() != 1 || last.size() != 1 || first[0] < '0' || first[0] > '7' ||
            last[0] < first[0] || last[0] > '7') {
            fail("bad state list \"" + text + "\"");
        }
        for (char s = first[0]; s <= last[0]; ++s) {
            set[static_cast<std::size_t>(s - '0')] = true;
        }
    }
    return set;
}

Keyboard& Parser::keyboard() {
    if (out_.keyboards.empty()) {
        fail("\"keyboard\" must come first");
    }
    return out_.keyboards.back();
}

Layout& Parser::layout() {
    Keyboard& k = keyboard();
    if (k.layouts.empty()) {
        fail("no \"layout\" started");
    }
    return k.layouts.back();
}

void Parser::need(const std::vector<Token>& t, std::size_t min, std::size_t max,
                  const char* usage) const {
    if (t.size() < min || t.size() > max) {
        fail(std::string("usage: ") + usage);
    }
}

void Parser::line(const std::vector<Token>& t) {
    if (t.empty()) {
        return;
    }
    const std::string& word = t[0].text;
    if (word == "keyboard") {
        need(t, 2, 3, "keyboard NAME [BLOCKNAME]");
        Keyboard k;
        k.directoryName = toNarrow(t[1].text);
        k.blockName = t.size() > 2 ? toNarrow(t[2].text) : k.directoryName;
        out_.keyboards.push_back(std::move(k));
    } else if (word == "layout") {
        need(t, 2, 4, "layout NAME [like OTHER]");
        Keyboard& k = keyboard();
        Layout l;
        l.name = toNarrow(t[1].text);
        if (t.size() > 2) {
            if (t.size() != 4 || t[2].text != "like") {
                fail("usage: layout NAME [like OTHER]");
            }
            const std::string other = toNarrow(t[3].text);
            const Layout* base = nullptr;
            for (const Layout& candidate : k.layouts) {
                if (candidate.name == other) {
                    base = &candidate;
                }
            }
            if (base == nullptr) {
                fail("no earlier layout \"" + t[3].text + "\" in this keyboard");
            }
            l.keys = base->keys;
            l.keyUnit = base->keyUnit;
            l.value2 = base->value2;
        }
        k.layouts.push_back(std::move(l));
    } else if (word == "text1" || word == "text2" || word == "text3") {
        need(t, 2, 2, "textN TEXT");
        Layout& l = layout();
        (word == "text1" ? l.text1 : word == "text2" ? l.text2 : l.text3) = toNarrow(t[1].text);
    } else if (word == "keyunit") {
        need(t, 2, 2, "keyunit N");
        layout().keyUnit = number16(t[1].text, "key unit");
    } else if (word == "value2") {
        need(t, 2, 2, "value2 N");
        layout().value2 = number16(t[1].text, "value2");
    } else if (word == "attribute") {
        need(t, 3, 3, "attribute N TEXT");
        const int value = number(t[1].text);
        if (value < 0 || value > 255) {
            fail("an attribute value is 0 to 255");
        }
        layout().attributes.push_back({value, toNarrow(t[2].text)});
    } else if (word == "pitch") {
        need(t, 2, 2, "pitch N");
        pitch_ = number(t[1].text);
        if (pitch_ <= 0) {
            fail("the pitch must be positive");
        }
    } else if (word == "gap") {
        need(t, 2, 2, "gap N");
        gap_ = number(t[1].text);
    } else if (word == "origin") {
        need(t, 3, 3, "origin X Y");
        originX_ = number(t[1].text);
        originY_ = number(t[2].text);
    } else if (word == "row") {
        need(t, 2, 3, "row Y [HEIGHT]");
        rowY_ = originY_ + number(t[1].text);
        rowHeightSet_ = t.size() > 2;
        rowHeight_ = rowHeightSet_ ? number(t[2].text) : 0;
        cursorX_ = originX_;
    } else if (word == "at") {
        need(t, 2, 2, "at X");
        cursorX_ = originX_ + number(t[1].text);
    } else if (word == "skip") {
        need(t, 2, 2, "skip DX");
        cursorX_ += number(t[1].text);
    } else if (word == "active") {
        need(t, 2, 2, "active STATES");
        active_ = states(t[1].text);
    } else if (word == "key") {
        keyLine(t, false);
    } else if (word == "set") {
        keyLine(t, true);
    } else {
        fail("unknown word \"" + word + "\"");
    }
}

// Labels of the states that a line gives; a state left out takes the label of the state with
// only its Shift bit, or else of state 0, so "a A" labels all eight states of a letter key.
std::array<ShiftState, 8> resolveLabels(const std::vector<std::optional<std::string>>& given,
                                        std::array<ShiftState, 8> table) {
    auto at = [&](std::size_t s) -> const std::optional<std::string>& {
        static const std::optional<std::string> none;
        return s < given.size() ? given[s] : none;
    };
    for (std::size_t s = 0; s < 8; ++s) {
        if (at(s)) {
            table[s].label = *at(s);
        } else if (at(s & 1)) {
            table[s].label = *at(s & 1);
        } else if (at(0)) {
            table[s].label = *at(0);
        } else {
            table[s].label.clear();
        }
    }
    return table;
}

void Parser::keyLine(const std::vector<Token>& t, bool isSet) {
    Layout& l = layout();
    Key fresh;
    Key* key = &fresh;
    std::size_t i = 1;
    if (isSet) {
        if (t.size() < 2 || t[1].quoted || t[1].text.size() < 2 || t[1].text[0] != '@') {
            fail("usage: set @TAG [OPTION...] [LABEL...] [| ALTLABEL...]");
        }
        key = nullptr;
        for (Key& candidate : l.keys) {
            if (candidate.tag == t[1].text.substr(1)) {
                key = &candidate;
            }
        }
        if (key == nullptr) {
            fail("no key " + t[1].text + " in this layout");
        }
        i = 2;
    } else {
        if (t.size() < 2) {
            fail("usage: key CODE [@TAG] [OPTION...] [LABEL...] [| ALTLABEL...]");
        }
        fresh.code = number16(t[1].text, "key code");
        i = 2;
        for (std::size_t s = 0; s < 8; ++s) {
            fresh.shifts[s].inactive = !active_[s];
        }
    }

    std::optional<int> x, y, w, h;
    std::optional<std::array<bool, 8>> off, on, altOff, altOn;
    std::vector<std::optional<std::string>> labels, altLabels;
    bool inAlt = false;
    bool anyLabel = false;
    for (; i < t.size(); ++i) {
        const Token& token = t[i];
        const std::string& s = token.text;
        if (!token.quoted && s == "|") {
            if (inAlt) {
                fail("a second \"|\"");
            }
            inAlt = true;
            continue;
        }
        if (!token.quoted && s.size() > 1 && s[0] == '@' && !anyLabel && !inAlt) {
            if (isSet) {
                fail("a key's tag cannot be changed");
            }
            fresh.tag = s.substr(1);
            for (const Key& other : l.keys) {
                if (other.tag == fresh.tag) {
                    fail("tag " + s + " is already used in this layout");
                }
            }
            continue;
        }
        const auto eq = s.find('=');
        if (!token.quoted && eq != std::string::npos && eq > 0 && !anyLabel && !inAlt) {
            const std::string name = s.substr(0, eq);
            const std::string value = s.substr(eq + 1);
            if (name == "x") {
                x = number16(value, "x");
            } else if (name == "y") {
                y = number16(value, "y");
            } else if (name == "w") {
                w = number(value);
            } else if (name == "h") {
                h = number(value);
            } else if (name == "code" && isSet) {
                key->code = number16(value, "key code");
            } else if (name == "mask") {
                key->modifierMask = number16(value, "mask");
            } else if (name == "alt") {
                key->altCode = number16(value, "alt code");
            } else if (name == "value") {
                key->keyValue = number(value);
                if (key->keyValue < 0 || key->keyValue > 255) {
                    fail("a key value is 0 to 255");
                }
            } else if (name == "shiftvalue") {
                key->shiftValue = number(value);
                if (key->shiftValue < 0 || key->shiftValue > 255) {
                    fail("a shift value is 0 to 255");
                }
            } else if (name == "off") {
                off = states(value);
            } else if (name == "on") {
                on = states(value);
            } else if (name == "altoff") {
                altOff = states(value);
            } else if (name == "alton") {
                altOn = states(value);
            } else {
                fail("unknown option \"" + name + "\"");
            }
            continue;
        }
        auto& list = inAlt ? altLabels : labels;
        if (list.size() == 8) {
            fail("more than eight labels");
        }
        if (!token.quoted && s == "~") {
            list.emplace_back();
        } else {
            list.emplace_back(toNarrow(s));
        }
        anyLabel = true;
    }

    if (!isSet) {
        const int height = h.value_or(rowHeightSet_ ? rowHeight_ : pitch_);
        const int width = w.value_or(pitch_);
        key->x = x ? originX_ + *x : cursorX_;
        key->y = y ? originY_ + *y : rowY_;
        key->width = width - gap_;
        key->height = height - gap_;
        cursorX_ = key->x + width;
    } else {
        if (x) {
            key->x = originX_ + *x;
        }
        if (y) {
            key->y = originY_ + *y;
        }
        if (w) {
            key->width = *w - gap_;
        }
        if (h) {
            key->height = *h - gap_;
        }
    }
    for (int v : {key->x, key->y, key->width, key->height}) {
        if (v < -32768 || v > 32767) {
            fail("a position or size does not fit 16 bits");
        }
    }
    if ((key->code & 0x0F00) != 0 || (key->altCode & 0x0F00) != 0) {
        fail("key codes keep bits 8 to 11 clear: those carry the modifiers");
    }

    if (!labels.empty() || !isSet) {
        key->shifts = resolveLabels(labels, key->shifts);
    }
    if (!isSet) {
        // A toggled table starts as a copy of the first, flags included.
        key->altShifts = key->shifts;
    }
    if (!altLabels.empty()) {
        key->altShifts = resolveLabels(altLabels, key->altShifts);
    }
    for (std::size_t s = 0; s < 8; ++s) {
        if (off && (*off)[s]) {
            key->shifts[s].inactive = true;
        }
        if (on && (*on)[s]) {
            key->shifts[s].inactive = false;
        }
        if (!isSet) {
            key->altShifts[s].inactive = key->shifts[s].inactive;
        }
        if (altOff && (*altOff)[s]) {
            key->altShifts[s].inactive = true;
        }
        if (altOn && (*altOn)[s]) {
            key->altShifts[s].inactive = false;
        }
    }
    if (!isSet) {
        l.keys.push_back(std::move(fresh));
    }
}

}  // namespace

bool parseDescription(const std::string& text, Description& out, std::string& error) {
    Parser parser(out);
    std::stringstream lines(text);
    std::string line;
    int number = 0;
    while (std::getline(lines, line)) {
        ++number;
        try {
            parser.line(tokenize(line));
        } catch (const ParseError& e) {
            error = "line " + std::to_string(number) + ": " + e.message;
            return false;
        }
    }
    if (out.keyboards.empty()) {
        error = "the description holds no keyboard";
        return false;
    }
    return true;
}

}  // namespace kdfw
