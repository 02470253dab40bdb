// POSIX side of the platform seam, for the native build. Paths arrive in Windows form: "\" is taken
// as "/", narrow paths are "C"-locale text (a byte per character) and reach the file system as UTF-8.
#include "platform/platform.h"

#include "text/textutil.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <ctime>

namespace qrl::platform {

namespace {

// _wfullpath works in a buffer of this many characters, the terminating zero included.
constexpr std::size_t kMaxPath = 260;

std::string nativePath(std::u16string_view path) {
    std::u16string p{path};
    for (char16_t& c : p)
        if (c == u'\\') c = u'/';
    return utf16ToUtf8(p);
}

bool isSeparator(char16_t c) { return c == u'/' || c == u'\\'; }

// Wildcards as the Windows file search applies them to a long name: "*" any run, "?" one
// character, case ignored.
bool matchesMask(std::u16string_view name, std::u16string_view mask) {
    std::size_t n = 0, m = 0, starMask = std::u16string_view::npos, starName = 0;
    while (n < name.size()) {
        if (m < mask.size() && (mask[m] == u'?' || foldCase(mask[m]) == foldCase(name[n]))) {
            ++n;
            ++m;
        } else if (m < mask.size() && mask[m] == u'*') {
            starMask = m++;
            starName = n;
        } else if (starMask != std::u16string_view::npos) {
            m = starMask + 1;
            n = ++starName;
        } else {
            return false;
        }
    }
    while (m < mask.size() && mask[m] == u'*') ++m;
    return m == mask.size();
}

// A path the file calls may be given: usable as it stands and still within the limit once full.
bool usable(const std::u16string& path, bool pattern = false) {
    return isUsablePath(path, pattern) && !fullPath(path).empty();
}

std::vector<std::u16string> listNative(const std::u16string& pattern) {
    std::vector<std::u16string> names;
    if (!usable(pattern, true)) return names;
    std::size_t cut = pattern.size();
    while (cut > 0 && !isSeparator(pattern[cut - 1])) --cut;
    const std::u16string_view mask = std::u16string_view{pattern}.substr(cut);
    const std::string folder = cut == 0 ? std::string{"."} : nativePath(std::u16string_view{pattern}.substr(0, cut));
    DIR* dir = opendir(folder.c_str());
    if (!dir) return names;
    while (const dirent* entry = readdir(dir)) {
        const std::string_view raw{entry->d_name};
        if (raw == "." || raw == "..") continue;
        std::u16string name = utf8ToUtf16(raw);
        if (matchesMask(name, mask)) names.push_back(std::move(name));
    }
    closedir(dir);
    return names;
}

bool readNative(const std::string& path, std::string& bytes) {
    bytes.clear();
    const int fd = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) return false;
    bool ok = true;
    char chunk[65536];
    for (;;) {
        const ssize_t got = read(fd, chunk, sizeof chunk);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) ok = false;  // a folder ends here too (EISDIR)
        if (got <= 0) break;
        bytes.append(chunk, static_cast<std::size_t>(got));
    }
    close(fd);
    if (!ok) bytes.clear();
    return ok;
}

}  // namespace

std::vector<std::string> listFiles(const std::string& pattern) {
    std::vector<std::string> names;
    for (const std::u16string& name : listNative(latin1ToUtf16(pattern))) names.push_back(utf16ToLatin1(name));
    return names;
}

std::vector<std::u16string> listFiles(const std::u16string& pattern) { return listNative(pattern); }

std::vector<std::u16string> listPlainFiles(const std::u16string& pattern) {
    std::size_t cut = pattern.size();
    while (cut > 0 && !isSeparator(pattern[cut - 1])) --cut;
    const std::u16string folder = pattern.substr(0, cut);
    std::vector<std::u16string> names;
    for (std::u16string& name : listNative(pattern)) {
        if (name.empty() || name[0] == u'.') continue;  // a hidden file
        struct stat st{};
        if (stat(nativePath(folder + name).c_str(), &st) != 0 || S_ISDIR(st.st_mode)) continue;
        names.push_back(std::move(name));
    }
    return names;
}

bool readFile(const std::string& path, std::string& bytes) { return readFile(latin1ToUtf16(path), bytes); }

bool readFile(const std::u16string& path, std::string& bytes) {
    bytes.clear();
    return usable(path) && readNative(nativePath(path), bytes);
}

namespace {

bool writeTo(const std::u16string& path, int flags, std::string_view bytes) {
    if (!usable(path)) return false;
    const int fd = open(nativePath(path).c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | flags, 0666);
    if (fd < 0) return false;
    bool ok = true;
    std::size_t done = 0;
    while (ok && done < bytes.size()) {
        const ssize_t put = write(fd, bytes.data() + done, bytes.size() - done);
        if (put < 0 && errno == EINTR) continue;
        ok = put > 0;
        if (ok) done += static_cast<std::size_t>(put);
    }
    return close(fd) == 0 && ok;
}

}  // namespace

bool writeFile(const std::u16string& path, std::string_view bytes) { return writeTo(path, O_TRUNC, bytes); }

bool appendFile(const std::u16string& path, std::string_view bytes) { return writeTo(path, O_APPEND, bytes); }

uint32_t fileTimeStamp(const std::u16string& path) {
    struct stat st{};
    if (!usable(path) || stat(nativePath(path).c_str(), &st) != 0) return 0;
    return static_cast<uint32_t>(st.st_mtime);
}

std::u16string fullPath(const std::u16string& path) {
    if (!isUsablePath(path, true)) return {};
    std::u16string whole;
    if (path.empty() || !isSeparator(path[0])) {
        char cwd[4096];
        if (!getcwd(cwd, sizeof cwd)) return {};
        whole = utf8ToUtf16(cwd) + u'/';
    }
    whole += path;
    // Fold ".", ".." and repeated separators as _wfullpath does; ".." stops at the root.
    std::vector<std::u16string> parts;
    std::size_t i = 0;
    while (i < whole.size()) {
        while (i < whole.size() && isSeparator(whole[i])) ++i;
        std::size_t end = i;
        while (end < whole.size() && !isSeparator(whole[end])) ++end;
        const std::u16string part = whole.substr(i, end - i);
        if (part == u"..") {
            if (!parts.empty()) parts.pop_back();
        } else if (!part.empty() && part != u".") {
            parts.push_back(part);
        }
        i = end;
    }
    std::u16string out;
    for (const std::u16string& part : parts) out += u'/' + part;
    if (out.empty() || (isSeparator(whole.back()) && !parts.empty())) out += u'/';
    if (out.size() >= kMaxPath) return {};
    return out;
}

uint32_t tickCount() {
    timespec ts{};
    clock_gettime(CLOCK_MONOTONIC, &ts);
    const uint64_t ms = static_cast<uint64_t>(ts.tv_sec) * 1000u + static_cast<uint64_t>(ts.tv_nsec) / 1000000u;
    return static_cast<uint32_t>(ms);
}

void sleepMs(uint32_t milliseconds) {
    timespec ts{static_cast<time_t>(milliseconds / 1000), static_cast<long>(milliseconds % 1000) * 1000000L};
    while (nanosleep(&ts, &ts) != 0 && errno == EINTR) {
    }
}

}  // namespace qrl::platform
