// Construction and ownership of the keyboard model: the factories through which the reader makes
// every object, plain or graphic.
#include "keyboard/kdf.h"

namespace qrl {

KbKey* KbLayout::newKey(std::int32_t code) { return new KbKey(code); }

KbLayout* KbKeyboard::newLayout(const std::string& name) { return new KbLayout(name); }

KbKeyboard* KbHdr::newKeyboard(const std::string& name) {
    auto* keyboard = new KbKeyboard;
    keyboard->Name = name;
    return keyboard;
}

void KbKeyboardAllocator::deallocate_clone(const KbKeyboard* keyboard) {
    if (const auto* graphic = dynamic_cast<const GKbKeyboard*>(keyboard)) {
        delete graphic;
        return;
    }
    // Only a plain keyboard is left, and it is deleted as exactly what it is.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdelete-non-virtual-dtor"
    delete keyboard;
#pragma GCC diagnostic pop
}

KbKey* GKbLayout::newKey(std::int32_t code) { return new GKbKey(code); }

KbLayout* GKbKeyboard::newLayout(const std::string& name) { return new GKbLayout(name); }

void GKbKeyboard::setOwners() {
    for (auto& plain : Layouts) {
        auto& layout = static_cast<GKbLayout&>(plain);
        for (auto& key : layout.Keys) {
            static_cast<GKbKey&>(key).Owner = &layout;
        }
    }
}

KbKeyboard* GKbHdr::newKeyboard(const std::string& name) {
    auto* keyboard = new GKbKeyboard;
    keyboard->Name = name;
    return keyboard;
}

void KeyStyle::releaseObjects() noexcept {
    if (auto release = ReleaseObjectsFn) {
        ReleaseObjectsFn = nullptr;
        release(*this);
    }
    FaceBrush = SelectedBrush = MappedBrush = HighlightBrush = ShadowBrush = nullptr;
    SingleCharFont = LongFont = InactivePen = nullptr;
}

}  // namespace qrl
