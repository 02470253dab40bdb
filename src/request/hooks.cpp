#include "request/hooks.h"

#include "colours/colourhooks.h"
#include "forms/formdef.h"
#include "hotspots/hotspotdata.h"
#include "keyboard/keymapdata.h"
#include "mouse/mousehooks.h"

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

const TRequestHooks& RequestHooks() {
    static const TRequestHooks hooks = [] {
        TRequestHooks made;
        InstallRequestHooks(made);
        return made;
    }();
    return hooks;
}

void InstallRequestHooks(TRequestHooks& hooks) {
    // Each subsystem that reads a share of the request installs its readers and writers here, e.g.
    //   hooks.interfaceReader = &ReadInterface;   hooks.groupsReader = &ReadGroups;
    //   hooks.SetDataKind(u"keymaplist", {&ReadKeyMapItem, &WriteKeyMapItem});
    hooks.interfaceReader = &ReadInterface;
    hooks.groupsReader = &ReadGroups;
    InstallColourHooks(hooks);
    InstallMouseHooks(hooks);
    InstallKeyDataHooks(hooks);
    InstallHotspotHooks(hooks);
}

}  // namespace qrl
