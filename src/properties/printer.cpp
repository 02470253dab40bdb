#include "properties/printer.h"

#include <array>

#include "text/textutil.h"

namespace qrl {

namespace {

enum Field { Device, Port, Driver, UseDefault, DeviceMode, FormName, ModeNumbers, DriverExtra, FieldCount };

}  // namespace

void ParsePrinter(std::u16string_view text, TPrinterProperty& property) {
    property = TPrinterProperty{};
    const std::vector<std::u16string_view> fields = SplitFields(text, property.separator);
    const std::array<std::u16string*, FieldCount> targets{
        &property.device,     &property.port,     &property.driver,      nullptr,
        &property.deviceMode, &property.formName, &property.modeNumbers, &property.driverExtra};
    for (std::size_t i = 0; i < fields.size() && i < targets.size(); ++i) {
        if (i == UseDefault)
            property.useDefault = wtoi(fields[i]) != 0;
        else
            *targets[i] = fields[i];
    }
}

std::u16string PrinterToText(const TPrinterProperty& property) {
    const char16_t sep = property.separator;
    std::u16string out;
    for (const std::u16string* field : {&property.device, &property.port, &property.driver}) {
        out += *field;
        out += sep;
    }
    out += property.useDefault ? u'1' : u'0';
    out += sep;
    for (const std::u16string* field :
         {&property.deviceMode, &property.formName, &property.modeNumbers, &property.driverExtra}) {
        out += *field;
        out += sep;
    }
    return out;
}

void UseDefaultPrinter(std::u16string& value, std::u16string& shown) {
    TPrinterProperty printer;
    ParsePrinter(value, printer);
    printer.useDefault = true;
    printer.device.clear();
    value = PrinterToText(printer);
    shown = PrinterShortText(printer);
}

std::u16string PrinterShortText(const TPrinterProperty& property) {
    if (property.device.empty() || property.useDefault) return u"Default printer";
    return property.device + u" on " + property.port;
}

void TPrinterProperty::Parse(std::u16string_view text) { ParsePrinter(text, *this); }
std::u16string TPrinterProperty::ToText() const { return PrinterToText(*this); }
std::u16string TPrinterProperty::ShortText() const { return PrinterShortText(*this); }

}  // namespace qrl
