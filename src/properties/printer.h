// A whole printer setup kept as one line of text: the value of a `printer` element.
#pragma once

#include <string>
#include <string_view>

#include "properties/property.h"

namespace qrl {

class TPrinterProperty final : public TPropertyBase {
public:
    void Parse(std::u16string_view text) override;
    std::u16string ToText() const override;
    std::u16string ShortText() const override;

    std::u16string driver;
    std::u16string device;
    std::u16string port;
    bool useDefault = true;      // follow the system's default printer
    std::u16string deviceMode;   // dmDeviceName of the device mode
    std::u16string formName;     // dmFormName
    std::u16string modeNumbers;  // the device mode's numeric fields, decimal, single blanks between
    std::u16string driverExtra;  // count of private bytes in 4 hex digits, then 2 per byte
};

// Value text: device|port|driver|useDefault (0 or 1)|deviceMode|formName|modeNumbers|driverExtra|
// Fields the text does not reach keep their initial values, so an empty text is the default
// printer.
void ParsePrinter(std::u16string_view text, TPrinterProperty& property);
std::u16string PrinterToText(const TPrinterProperty& property);
// A printer value turned back to the system's default printer, the rest of its setup kept; `shown`
// gets its short text.
void UseDefaultPrinter(std::u16string& value, std::u16string& shown);
// "Default printer", or the device " on " its port. Not translated.
std::u16string PrinterShortText(const TPrinterProperty& property);

}  // namespace qrl
