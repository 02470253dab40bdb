// The SSL certificate value and its password scrambling: any text reads without fault, and what
// the property writes reads back to the same text and password.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "properties/sslcertificate.h"
#include "text/textutil.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    const std::u16string text = qrl::utf8ToUtf16({reinterpret_cast<const char*>(data), size});
    qrl::TSslCertificateProperty p;
    p.Parse(text);
    (void)p.ShortText();
    (void)qrl::UnscramblePassword(text);
    const std::u16string written = p.ToText();
    qrl::TSslCertificateProperty again;
    again.Parse(written);
    if (again.ToText() != written) __builtin_trap();
    return 0;
}
