#include "languagefiles.h"

#include <windows.h>

#include <cstdio>
#include <vector>

#include "app/moduletexts.h"
#include "locale/languagefile.h"
#include "platform/platform.h"
#include "text/textutil.h"

namespace qrl4host {

namespace {

std::u16string path16(const std::wstring& file) { return std::u16string(reinterpret_cast<const char16_t*>(file.c_str())); }

int writeText(const std::wstring& file, const std::string& text) {
    if (qrl::platform::writeFile(path16(file), text)) return 0;
    std::fprintf(stderr, "qrl4host: cannot write %ls\n", file.c_str());
    return 2;
}

}  // namespace

int writeLanguageTemplate(const std::wstring& file) { return writeText(file, qrl::LanguageTemplate(qrl::ModuleTextCatalogue())); }

int writePseudoLanguage(const std::wstring& file) { return writeText(file, qrl::PseudoLanguage(qrl::ModuleTextCatalogue())); }

namespace {

// A folder stands for a whole language: its *.lang files in the order the folder lists them, as
// the module reads them.
std::vector<std::wstring> languageFiles(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || !(attributes & FILE_ATTRIBUTE_DIRECTORY)) return {path};
    const std::wstring folder = path.back() == L'\\' || path.back() == L'/' ? path : path + L"\\";
    std::vector<std::wstring> files;
    WIN32_FIND_DATAW found;
    const HANDLE search = FindFirstFileW((folder + L"*.lang").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return files;
    do {
        if (!(found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)) files.push_back(folder + found.cFileName);
    } while (FindNextFileW(search, &found));
    FindClose(search);
    return files;
}

}  // namespace

int checkLanguageFile(const std::wstring& path) {
    const std::vector<std::wstring> paths = languageFiles(path);
    std::vector<std::string> bytes(paths.size());
    std::vector<qrl::TLanguageSource> files;
    for (std::size_t i = 0; i < paths.size(); ++i) {
        if (!qrl::platform::readFile(path16(paths[i]), bytes[i])) {
            std::fprintf(stderr, "qrl4host: cannot read %ls\n", paths[i].c_str());
            return 2;
        }
        files.push_back({qrl::utf16ToUtf8(path16(paths[i])), bytes[i]});
    }
    const auto findings = qrl::CheckLanguage(files, qrl::utf16ToUtf8(path16(path)), qrl::ModuleTextCatalogue());
    for (const qrl::TLanguageFinding& finding : findings) std::printf("%s\n", qrl::FormatLanguageFinding(finding).c_str());
    return findings.empty() ? 0 : 1;
}

}  // namespace qrl4host
