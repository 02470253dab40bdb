// Ini files are outside input. Parsing any bytes must stay within them, and writing what was read
// and reading it again must give the same sections.
#include "locale/inicache.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace {

bool sameEntries(const std::vector<qrl::IniSection>& a, const std::vector<qrl::IniSection>& b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (a[i].name != b[i].name || a[i].entries.size() != b[i].entries.size()) return false;
        for (std::size_t j = 0; j < a[i].entries.size(); ++j) {
            const auto& x = a[i].entries[j];
            const auto& y = b[i].entries[j];
            if (x.key != y.key || x.value != y.value || x.raw != y.raw) return false;
        }
    }
    return true;
}

// A text survives a round trip only when nothing in it is read differently once written: "]" in
// a name, "=" in a key, line ends, zeros, keys that look like headers or comments, raw lines
// without their line end, lines long enough to be read in pieces.
bool roundTrips(const std::vector<qrl::IniSection>& sections) {
    const auto fits = [](std::u16string_view s, std::u16string_view banned) {
        return s.size() < 1000 && s.find_first_of(banned) == std::u16string_view::npos;
    };
    const std::u16string_view lineEnds{u"\r\n\0", 3};
    const std::u16string_view nameBreakers{u"]=\r\n\0", 5};
    for (const auto& section : sections) {
        if (!fits(section.name, nameBreakers)) return false;
        for (const auto& entry : section.entries) {
            if (entry.raw) {
                if (entry.key.empty() || entry.key.size() >= 1000 || entry.key.back() != u'\n') return false;
                if (entry.key.find(u'\0') != std::u16string::npos) return false;
                continue;
            }
            if (!fits(entry.key, nameBreakers) || !fits(entry.value, lineEnds)) return false;
            if (!entry.key.empty() && (entry.key.front() == u'[' || entry.key.front() == u';')) return false;
        }
    }
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const auto sections = qrl::parseIniText(bytes);
    const std::string written = qrl::formatIniText(sections);
    const auto again = qrl::parseIniText(written);
    if (roundTrips(sections) && !sameEntries(sections, again)) std::abort();
    return 0;
}
