#include "properties/property.h"

#include "text/textutil.h"

namespace qrl {

std::vector<std::u16string_view> SplitFields(std::u16string_view text, char16_t separator) {
    std::vector<std::u16string_view> fields;
    std::size_t pos = 0;
    while (pos < text.size()) {
        const std::size_t end = text.find(separator, pos);
        if (end == std::u16string_view::npos) {
            fields.push_back(text.substr(pos));
            break;
        }
        fields.push_back(text.substr(pos, end - pos));
        pos = end + 1;
    }
    return fields;
}

std::size_t ReadNumberStream(std::u16string_view text, int32_t* out, std::size_t count) {
    std::size_t pos = 0;
    std::size_t read = 0;
    while (read < count && pos < text.size()) {
        std::size_t used = 0;
        out[read++] = wcstolBase10(text.substr(pos), &used);  // 0 where there is no number
        pos += used;
        if (pos < text.size()) ++pos;  // the separator, whatever it is
    }
    return read;
}

void AppendStreamNumber(std::u16string& out, int32_t value) {
    out += decimal(value);
    out += u';';
}

void AppendHexFixed(std::u16string& out, uint32_t value, int digits) {
    static constexpr char16_t hex[] = u"0123456789ABCDEF";
    if (digits > 8) digits = 8;  // a 32-bit value has no more
    for (int shift = (digits - 1) * 4; shift >= 0; shift -= 4) out += hex[(value >> shift) & 15u];
}

}  // namespace qrl
