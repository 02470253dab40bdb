#include "kit/fieldrules.h"

#include "text/textutil.h"

#include <cstdint>
#include <limits>

namespace qrl {

bool CheckIntegerText(std::u16string_view text, std::int32_t min, std::int32_t max, std::u16string& message) {
    std::size_t used = 0;
    const std::int32_t number = wcstolBase10(text, &used);
    std::size_t rest = used;
    while (rest < text.size() && isRuntimeSpace(text[rest])) ++rest;
    // The range ends count as overflow: a conversion that clamped can't be told from them.
    if (number == std::numeric_limits<std::int32_t>::max() || number == std::numeric_limits<std::int32_t>::min() ||
        rest < text.size()) {
        message = u"\"" + std::u16string(text) + u"\" is not a valid number";
        return false;
    }
    if (min > max || (min == 0 && max == 0) || (number >= min && number <= max)) return true;
    message = u"Value must be between " + decimal(min) + u" and " + decimal(max);
    return false;
}

std::u16string BuildBrowseFilter(std::u16string_view fileFilter, std::u16string_view allFiles) {
    constexpr std::size_t kRoom = 400 - 1;  // a buffer of 400 with its terminator
    std::u16string filter(fileFilter.substr(0, kRoom));
    filter.append(allFiles.substr(0, kRoom - filter.size()));
    for (char16_t& c : filter)
        if (c == u'|') c = 0;
    filter.push_back(0);
    filter.push_back(0);
    return filter;
}

std::u16string BrowseInitialFile(std::u16string_view value) {
    std::u16string file(value.substr(0, 260 - 1));
    for (char16_t& c : file)
        if (c == u'/') c = u'\\';
    return file;
}

ImportPlan PlanKeyImport(std::u16string_view authDirectory, std::u16string_view chosenPath,
                         const std::function<bool(const std::u16string&)>& exists) {
    ImportPlan plan;
    plan.directory = std::u16string(authDirectory);
    if (plan.directory.empty() || (plan.directory.back() != u'\\' && plan.directory.back() != u'/'))
        plan.directory.push_back(u'\\');
    std::u16string chosen(chosenPath);
    for (char16_t& c : chosen)
        if (c == u'/') c = u'\\';
    const std::size_t slash = chosen.rfind(u'\\');
    const std::u16string fileName = slash == std::u16string::npos ? chosen : chosen.substr(slash + 1);
    plan.name = fileName;
    plan.target = plan.directory + plan.name;
    // The number goes behind the extension ("id_rsa.pub (2)"): that is how the names were always made.
    if (plan.target != chosenPath && exists(plan.target)) {
        for (int n = 2; n <= 1000; ++n) {
            plan.name = fileName + u" (" + decimal(n) + u")";
            plan.target = plan.directory + plan.name;
            if (!exists(plan.target)) break;
        }
    }
    plan.copy = plan.target != chosenPath;
    return plan;
}

bool RemoveLanguageEntry(std::vector<std::u16string>& strings, std::vector<std::u16string>& values,
                         std::u16string_view language) {
    for (std::size_t i = 0; i < strings.size(); ++i) {
        if (strings[i] != language) continue;
        strings.erase(strings.begin() + static_cast<std::ptrdiff_t>(i));
        if (i < values.size()) values.erase(values.begin() + static_cast<std::ptrdiff_t>(i));
        return true;
    }
    return false;
}

int SelectionAfterDelete(int oldPosition, std::size_t count) {
    if (oldPosition < 0 || count == 0) return -1;
    return oldPosition < static_cast<int>(count) ? oldPosition : static_cast<int>(count) - 1;
}

}  // namespace qrl
