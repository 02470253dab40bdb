// Path building for files named in a request relative to a folder (.kdf and .hsp files).
#include "keyboard/kdf.h"

namespace qrl {

namespace {

bool isSlash(char16_t c) { return c == u'/' || c == u'\\'; }

// "\\server\share", "C:\x" and "C:/x", "\x" and "/x". A drive with nothing or anything but a
// slash behind its colon ("C:", "C:x") is relative to that drive's current folder and so counts
// as relative here.
bool isAbsolute(const std::u16string& name) {
    if (name.size() >= 2 && name[0] == u'\\' && name[1] == u'\\') {
        return true;
    }
    if (name.size() >= 2 && name[1] == u':') {
        return name.size() >= 3 && isSlash(name[2]);
    }
    return !name.empty() && isSlash(name[0]);
}

}  // namespace

std::u16string joinPath(const std::u16string& directory, const std::u16string& name) {
    if (isAbsolute(name)) {
        return name;
    }
    std::u16string path = directory;
    if (!path.empty() && !isSlash(path.back())) {
        path += u'\\';
    }
    path += name;
    return path;
}

}  // namespace qrl
