// Arbitrary bytes as a .hsp file: every set in it is read (following `Set` redirections), its old
// form converted, written to a second file and read back. Records must come out with the fix-ups of
// reading applied, and a set written under a plain name must read back with as many hotspots.
// The record parser also takes the whole input as one record text.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>

#include <unistd.h>

#include "hotspots/hotspotfile.h"
#include "keyboard/keymapdata.h"
#include "locale/inicache.h"
#include "text/textutil.h"

namespace {

void check(bool condition) {
    if (!condition) __builtin_trap();
}

void checkRecords(const qrl::HotSpots& set) {
    std::size_t n = 0;
    for (const qrl::HotSpot& spot : set.spots) {
        check(spot.left >= 0 && spot.top >= 0 && spot.right >= spot.left);
        check(spot.recordType <= qrl::kRecordTypeMax);
        check(!spot.description.empty());
        ++n;
    }
    check(static_cast<std::int64_t>(n) == set.count);
}

bool plainName(const std::u16string& name) {
    if (name.empty()) return false;
    for (char16_t c : name)
        if (!((c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9') || c == u'_')) return false;
    return true;
}

// One pair of files per process, so that fuzzers running side by side keep apart. Memory-backed
// where there is such a folder: every input writes its files many times.
std::string tempPath(const char* suffix) {
    std::error_code error;
    const std::filesystem::path shm = "/dev/shm";
    const std::filesystem::path dir =
        std::filesystem::is_directory(shm, error) ? shm : std::filesystem::temp_directory_path();
    return (dir / ("qrl_hsp_fuzz_" + std::to_string(getpid()) + suffix)).string();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace qrl;
    const std::string bytes(reinterpret_cast<const char*>(data), size);

    HotSpot record;
    ParseHotSpotRecord(latin1ToUtf16(bytes), record);
    check(!FormatHotSpotRecord(record).empty());

    static const std::string inPath = tempPath(".hsp");
    static const std::string outPath = tempPath("_out.hsp");
    if (std::FILE* f = std::fopen(inPath.c_str(), "wb")) {
        std::fwrite(bytes.data(), 1, bytes.size(), f);
        std::fclose(f);
    } else {
        return 0;
    }
    std::remove(outPath.c_str());
    // The cache looks at a file's time stamp only now and then; each input is a new file to it.
    IniFileCache::instance().files.clear();

    const std::u16string in = latin1ToUtf16(inPath);
    const std::u16string out = latin1ToUtf16(outPath);
    TKeyData keys;
    keys.physicalKeys = {{u"F1", 112, 0x700}, {u"", 0, 0}};
    keys.emulationKeys = {{u"PF1", 7, 0}, {u"Zero", 0, 0}};
    keys.keyMap = {{112, 7}, {0, 0}};

    std::vector<std::u16string> names = HotSpotSetNames(in);
    if (names.size() > 4) names.resize(4);
    names.push_back(u"s.1");
    for (const std::u16string& name : names) {
        HotSpots set;
        set.Read(in.c_str(), name.c_str());
        checkRecords(set);
        set.ConvertKeys(keys);
        check(!set.needsKeyConversion);
        if (set.count > 8) continue;  // every key written rewrites the file: keep each input cheap
        set.dirty = true;
        set.Write(out.c_str(), nullptr);
        check(!set.dirty);
        HotSpots back;
        back.Read(out.c_str(), set.setName.c_str());
        checkRecords(back);
        if (plainName(set.setName)) check(back.count == set.count);
    }
    return 0;
}
