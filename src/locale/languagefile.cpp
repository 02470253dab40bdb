#include "locale/languagefile.h"

#include "locale/language.h"
#include "locale/languageline.h"
#include "text/textutil.h"

#include <algorithm>
#include <functional>
#include <map>

namespace qrl {

namespace {

// The file format has no comment; a line without "=" is skipped, so a comment must not hold one.
std::string CommentLine(std::string text) {
    std::replace(text.begin(), text.end(), '=', '-');
    std::replace(text.begin(), text.end(), '\n', ' ');
    std::replace(text.begin(), text.end(), '\r', ' ');
    return "# " + text + "\n";
}

using TTextChange = std::function<std::u16string(std::u16string_view)>;

// The first default, changed, that the format can hold: the one a file offers for the key.
std::optional<std::string> FirstValue(const TCatalogueText& text, const TTextChange& change) {
    for (const std::u16string& defaultText : text.defaults)
        if (auto value = LanguageFileValue(change(defaultText))) return value;
    return std::nullopt;
}

std::u16string Unchanged(std::u16string_view text) { return std::u16string(text); }

std::string WriteLanguageFile(const TTextCatalogue& catalogue, const char* heading, const TTextChange& change) {
    std::string out = CommentLine(heading);
    out += CommentLine("Lines are key, the sign of equality, then the text; a line that begins with # is not read.");
    std::vector<std::string> groups;
    for (const TCatalogueText& text : catalogue.Texts())
        if (std::find(groups.begin(), groups.end(), text.group) == groups.end()) groups.push_back(text.group);
    for (const std::string& group : groups) {
        out += "\n" + CommentLine(group);
        for (const TCatalogueText& text : catalogue.Texts()) {
            if (text.group != group || text.defaults.front().empty()) continue;
            const std::string key = utf16ToUtf8(text.key);
            const auto value = FirstValue(text, change);
            if (value) out += key + "=" + *value + "\n";
            else
                out += CommentLine(key + " holds a comma, which a language file cannot store: \"" +
                                   utf16ToUtf8(text.defaults.front()) + "\"");
        }
    }
    return out;
}

// A letter of the same shape with a mark on it, so that a text never translated stands out.
char16_t Accented(char16_t c) {
    static constexpr char16_t kLower[] = u"áƀçðéƒĝĥîĵķļɱñöþǫŕšţûṽŵẋýž";
    static constexpr char16_t kUpper[] = u"ÅƁÇÐÉƑĜĤÎĴĶĻṀÑÖÞǪŔŜŢÛṼŴẊÝŽ";
    if (c >= u'a' && c <= u'z') return kLower[c - u'a'];
    if (c >= u'A' && c <= u'Z') return kUpper[c - u'A'];
    return c;
}

// The length of a printf conversion at text[i] ("%" first), or 0 when none stands there.
std::size_t PlaceholderLength(std::u16string_view text, std::size_t i) {
    std::size_t j = i + 1;
    if (j < text.size() && text[j] >= u'1' && text[j] <= u'9') {  // %1: a numbered argument
        while (j < text.size() && text[j] >= u'0' && text[j] <= u'9') ++j;
        return j - i;
    }
    while (j < text.size() && std::u16string_view(u"-+ #0123456789.*hlLzjt").find(text[j]) != std::u16string_view::npos) ++j;
    if (j < text.size() && std::u16string_view(u"diouxXeEfgGcsSpn").find(text[j]) != std::u16string_view::npos)
        return j + 1 - i;
    return 0;
}

std::vector<std::u16string> Placeholders(std::u16string_view text) {
    std::vector<std::u16string> found;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != u'%') continue;
        if (i + 1 < text.size() && text[i + 1] == u'%') {
            ++i;
            continue;
        }
        if (const std::size_t length = PlaceholderLength(text, i)) found.emplace_back(text.substr(i, length));
    }
    std::sort(found.begin(), found.end());
    return found;
}

// An "&" before another character marks the accelerator; "&&" is a plain ampersand.
bool HasAccelerator(std::u16string_view text) {
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        if (text[i] != u'&') continue;
        if (text[i + 1] != u'&') return true;
        ++i;
    }
    return false;
}

std::u16string PseudoSegment(std::u16string_view text) {
    std::u16string out = u"[";
    for (std::size_t i = 0; i < text.size(); ++i) {
        std::size_t keep = 0;  // characters that must stay as they are
        if (text[i] == u'\\' || (text[i] == u'&' && i + 1 < text.size())) keep = 2;
        else if (text[i] == u'%') keep = text.substr(i, 2) == u"%%" ? 2 : PlaceholderLength(text, i);
        if (keep) {
            out += text.substr(i, keep);
            i += std::min(keep, text.size() - i) - 1;
        } else {
            out += text[i] == u',' ? u'\u201A' : Accented(text[i]);  // a comma would end the value
        }
    }
    out.append(text.size() * 2 / 5 + 1 + (text.size() * 2 % 5 != 0), u'\u00B7');
    return out + u"]";
}

// A file filter's patterns ("*.hsp") must still match files: only its descriptions change.
bool IsFilterPattern(std::u16string_view segment) {
    return segment.find(u'*') != std::u16string_view::npos && segment.find(u' ') == std::u16string_view::npos;
}

std::string Quoted(std::u16string_view text) {
    std::string out = "\"" + utf16ToUtf8(text) + "\"";
    for (std::size_t at = out.find('\n'); at != std::string::npos; at = out.find('\n', at)) out.replace(at, 1, "\\n");
    return out;
}

}  // namespace

std::optional<std::string> LanguageFileValue(std::u16string_view text) {
    if (text.empty() || text.find(u',') != std::u16string_view::npos) return std::nullopt;
    std::string value;
    for (char c : utf16ToUtf8(text)) {
        if (c == '\n') value += "\\n";
        else if (c == '\r') value += "\\r";
        else value += c;
    }
    // The reader drops a leading quote with the last character: quoting keeps both, and keeps the
    // spaces at either end that an editor might trim.
    if (text.front() == u'"' || text.front() == u' ' || text.back() == u' ') return "\"" + value + "\"";
    return value;
}

std::string LanguageTemplate(const TTextCatalogue& catalogue) {
    return WriteLanguageFile(catalogue, "qrl4cfg language template: every text the module shows, in English.",
                             Unchanged);
}

std::u16string PseudoText(std::u16string_view text) {
    if (text.find(u'|') == std::u16string_view::npos) return text.empty() ? std::u16string() : PseudoSegment(text);
    std::u16string out;
    std::size_t start = 0;
    for (;;) {
        const std::size_t end = std::min(text.find(u'|', start), text.size());
        const std::u16string_view segment = text.substr(start, end - start);
        out += segment.empty() || IsFilterPattern(segment) ? std::u16string(segment) : PseudoSegment(segment);
        if (end == text.size()) return out;
        out += u'|';
        start = end + 1;
    }
}

std::string PseudoLanguage(const TTextCatalogue& catalogue) {
    return WriteLanguageFile(catalogue, "qrl4cfg pseudo-language: every text accented, longer and in brackets.",
                             [](std::u16string_view text) { return PseudoText(text); });
}

namespace {

// Reads the files of one language in turn, as the module would, and notes what it finds.
class TLanguageChecker {
public:
    explicit TLanguageChecker(const TTextCatalogue& catalogue) : catalogue_(catalogue) {}

    void CheckFile(const TLanguageSource& file) {
        const std::string_view text = file.text;
        if (text.substr(0, 3) == "\xEF\xBB\xBF")
            Note(file.name, 1, "the file begins with a byte-order mark, which becomes part of the first key");
        int lineNumber = 1;
        std::size_t start = 0;
        for (std::size_t i = 0; i < text.size(); ++i) {
            if (text[i] != '\r' && text[i] != '\n') continue;
            if (const auto line = ParseLanguageLine(text.substr(start, i - start))) CheckLine(file.name, lineNumber, *line);
            // CR LF ends one line.
            if (text[i] == '\n' || i + 1 == text.size() || text[i + 1] != '\n') ++lineNumber;
            start = i + 1;
        }
        if (text.substr(start).find_first_not_of(" \t") != std::string_view::npos)
            Note(file.name, lineNumber, "the last line has no line end, so it is not read");
    }

    void NoteMissingKeys(const std::string& language) {
        for (const TCatalogueText& text : catalogue_.Texts())
            if (!seen_.count(utf16ToUtf8(text.key)) && !text.defaults.front().empty() && FirstValue(text, Unchanged))
                Note(language, 0, "lacks \"" + utf16ToUtf8(text.key) + "\" (English: " + Quoted(text.defaults.front()) + ")");
    }

    std::vector<TLanguageFinding> Findings() && { return std::move(findings_); }

private:
    void Note(const std::string& file, int line, std::string text) { findings_.push_back({file, line, std::move(text)}); }

    void CheckLine(const std::string& file, int at, const TLanguageLine& line) {
        if (line.key.find('.') != std::string::npos) return;
        const std::string key = "\"" + line.key + "\"";
        if (const auto [first, isNew] = seen_.emplace(line.key, std::pair{file, at}); !isNew) {
            const auto& [firstFile, firstLine] = first->second;
            Note(file, at, key + (firstFile == file ? " is defined again; the definition on line " + std::to_string(firstLine) + " is the one used"
                                                    : " is defined in " + firstFile + " too; the file the folder lists first is the one used"));
            return;
        }
        const TCatalogueText* known = catalogue_.Find(utf8ToUtf16(line.key));
        if (!known) return Note(file, at, "unknown key " + key);
        if (line.cut) Note(file, at, key + ": the text ends at the comma; what follows it is lost");
        CheckMarks(file, at, key, *known, UndoLanguageEscapes(utf8ToUtf16(line.value)));
    }

    // A translation keeps the placeholders and the accelerator of one of its English texts.
    void CheckMarks(const std::string& file, int at, const std::string& key, const TCatalogueText& known,
                    const std::u16string& shown) {
        const auto matches = [&](auto mark) {
            return std::any_of(known.defaults.begin(), known.defaults.end(), [&](const std::u16string& english) {
                return mark(UndoLanguageEscapes(english)) == mark(shown);
            });
        };
        const auto listed = [](const std::u16string& text) {
            std::string list;
            for (const std::u16string& p : Placeholders(text)) list += " " + utf16ToUtf8(p);
            return list.empty() ? std::string(" (none)") : list;
        };
        if (!matches(Placeholders))
            Note(file, at, key + ": the English text has the placeholders" + listed(UndoLanguageEscapes(known.defaults.front())) +
                               ", this one" + listed(shown));
        if (!matches(HasAccelerator))
            Note(file, at, key + (HasAccelerator(shown) ? ": this text has an accelerator (&), the English text has none"
                                                        : ": the English text has an accelerator (&), this one has none"));
    }

    const TTextCatalogue& catalogue_;
    std::map<std::string, std::pair<std::string, int>> seen_;  // key -> file and line of its first definition
    std::vector<TLanguageFinding> findings_;
};

}  // namespace

std::vector<TLanguageFinding> CheckLanguage(std::span<const TLanguageSource> files, const std::string& language,
                                            const TTextCatalogue& catalogue) {
    TLanguageChecker checker(catalogue);
    for (const TLanguageSource& file : files) checker.CheckFile(file);
    checker.NoteMissingKeys(language);
    return std::move(checker).Findings();
}

std::string FormatLanguageFinding(const TLanguageFinding& finding) {
    std::string out = finding.file;
    if (finding.line > 0) out += ":" + std::to_string(finding.line);
    return out + ": " + finding.text;
}

}  // namespace qrl
