#include "request/hooks.h"


namespace qrl {

bool TRequestHooks::SetDataKind(std::u16string_view typeWord, TDataKind kind) {
    const ElementType type = ParseElementType(typeWord);
    if (!IsListType(type)) return false;
    kinds_[static_cast<std::size_t>(type)] = kind;
    return true;
}

const TDataKind& TRequestHooks::DataKind(ElementType type) const {
    static const TDataKind kNone{};
    const auto index = static_cast<std::size_t>(type);
    return index < kinds_.size() ? kinds_[index] : kNone;
}

void TRequestHooks::SetShortText(ElementType type, TShortTextFn shortText) {
    const auto index = static_cast<std::size_t>(type);
    if (index < shortTexts_.size()) shortTexts_[index] = shortText;
}

TShortTextFn TRequestHooks::ShortText(ElementType type) const {
    const auto index = static_cast<std::size_t>(type);
    return index < shortTexts_.size() ? shortTexts_[index] : nullptr;
}

}  // namespace qrl
