// Reading request documents of about 100 KB, 1 MB and 10 MB (UTF-16 bytes) with our reader and,
// from the same UTF-16 buffer, with pugixml.
//
// Each parser runs twice per size. "default": the C library as it comes; it hands the freed tree of
// a large document back to the system, so every parse of it faults in fresh pages (page_faults
// counts them per parse), which on a virtual machine costs nearly as much as the parsing. "warm":
// the C library keeps freed memory (mallopt), every parse reuses mapped pages: the parser alone,
// as in a long-running process. The default runs go first, before mallopt changes the library.
//
// Counters: ns_per_element (CPU time per element of the document), tree_ratio (heap bytes that
// the parsed tree holds, per byte of UTF-16 text) and peak_ratio (highest heap use while parsing,
// per byte of text). Heap bytes are counted by the global operator new and delete below, and for
// pugixml by its allocation hooks.
//
//   build/native/bench/xml_bench --benchmark_repetitions=5 --benchmark_report_aggregates_only=true
#include <benchmark/benchmark.h>
#include <malloc.h>
#include <sys/resource.h>

#include <cstdio>
#include <cstdlib>
#include <new>
#include <pugixml.hpp>
#include <string>

#include "warmheap.h"
#include "xml/node.h"
#include "xml/parser.h"

// ---- Heap accounting

namespace {
std::size_t g_current = 0;
std::size_t g_peak = 0;

void* Counted(void* p) {
    if (!p) return nullptr;
    g_current += malloc_usable_size(p);
    if (g_current > g_peak) g_peak = g_current;
    return p;
}
void Uncounted(void* p) {
    if (!p) return;
    g_current -= malloc_usable_size(p);
    std::free(p);
}
void* CountedNew(std::size_t n) {
    void* p = Counted(std::malloc(n ? n : 1));
    if (!p) throw std::bad_alloc();
    return p;
}

struct HeapWatch {
    std::size_t base = g_current;
    HeapWatch() { g_peak = g_current; }
    std::size_t Held() const { return g_current - base; }
    std::size_t Peak() const { return g_peak - base; }
};
}  // namespace

void* operator new(std::size_t n) { return CountedNew(n); }
void* operator new[](std::size_t n) { return CountedNew(n); }
void operator delete(void* p) noexcept { Uncounted(p); }
void operator delete[](void* p) noexcept { Uncounted(p); }
void operator delete(void* p, std::size_t) noexcept { Uncounted(p); }
void operator delete[](void* p, std::size_t) noexcept { Uncounted(p); }

// ---- Request documents

namespace {

struct Request {
    std::u16string text;
    std::size_t elements = 0;
};

void Put(std::u16string& out, const char* ascii) {
    while (*ascii) out.push_back(static_cast<unsigned char>(*ascii++));
}

// A DTD block of element definitions, a Data block of items and a large key map, in the
// proportions of a big real request; grown unit by unit until the text reaches the target.
Request MakeRequest(std::size_t targetBytes) {
    static const char* const kTypes[] = {"text", "int", "bool", "set", "filepath", "rgb", "char8", "stringset"};
    static const char* const kGroups[] = {"Connection", "Connection.Advanced", "Display.Colours", "Keyboard",
                                          "Transfer.Options"};
    std::string dtd, data, keys;
    std::size_t elements = 4;  // Config, DTD, Data, the key map item
    char line[512];
    std::size_t bytes = 0;
    for (int i = 0; bytes < targetBytes; ++i) {
        std::snprintf(line, sizeof line,
                      "    <Element Name=\"Setting%05d\" Type=\"%s\" Min=\"0\" Max=\"%d\" Default=\"%d\" "
                      "group=\"%s\" descr=\"Value %d of the host &amp; session link\" help_id=\"%d\" "
                      "rdonly=\"%d\"/>\r\n",
                      i, kTypes[i % 8], 100 + i % 900, i % 100, kGroups[i % 5], i, 1000 + i, i % 2);
        dtd += line;
        std::snprintf(line, sizeof line, "    <Item Element=\"Setting%05d\" Value=\"%s%d\"/>\r\n", i,
                      i % 3 ? "" : "&quot;v&quot; ", i * 7);
        data += line;
        for (int k = 0; k < 4; ++k) {
            std::snprintf(line, sizeof line, "      <Map pkey=\"%d\" emkey=\"%d\"/>\r\n", 0x4000 * (k & 1) + i % 256,
                          4096 + (i * 4 + k) % 8192);
            keys += line;
        }
        elements += 6;
        bytes = 2 * (dtd.size() + data.size() + keys.size() + 200);
    }
    Request r;
    r.elements = elements;
    Put(r.text, "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n"
                "<Config ModuleType=\"Emul\" LangId=\"1033\" LangDir=\"C:\\Quorl4\\lang\" IniFile=\"q4.ini\">\r\n"
                "  <DTD>\r\n");
    Put(r.text, dtd.c_str());
    Put(r.text, "  </DTD>\r\n  <Data>\r\n");
    Put(r.text, data.c_str());
    Put(r.text, "    <Item Element=\"KeyMap\">\r\n");
    Put(r.text, keys.c_str());
    Put(r.text, "    </Item>\r\n  </Data>\r\n</Config>\r\n");
    return r;
}

const Request& RequestOf(std::size_t bytes) {
    static const Request small = MakeRequest(100 * 1000);
    static const Request medium = MakeRequest(1000 * 1000);
    static const Request large = MakeRequest(10 * 1000 * 1000);
    return bytes <= 100 * 1000 ? small : bytes <= 1000 * 1000 ? medium : large;
}

long MinorFaults() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_minflt;
}

void SetCounters(benchmark::State& state, const Request& r, std::size_t held, std::size_t peak, long faults) {
    state.counters["page_faults"] = benchmark::Counter(static_cast<double>(faults), benchmark::Counter::kAvgIterations);
    const double textBytes = static_cast<double>(r.text.size() * sizeof(char16_t));
    state.counters["ns_per_element"] =
        benchmark::Counter(static_cast<double>(r.elements) * 1e-9,
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
    state.counters["elements"] = static_cast<double>(r.elements);
    state.counters["tree_ratio"] = static_cast<double>(held) / textBytes;
    state.counters["peak_ratio"] = static_cast<double>(peak) / textBytes;
}

void BM_Ours(benchmark::State& state) {
    const Request& r = RequestOf(static_cast<std::size_t>(state.range(0)));
    std::size_t held = 0, peak = 0;
    const long faults = MinorFaults();
    for (auto _ : state) {
        HeapWatch watch;
        AdvXMLParser::Parser parser;
        std::unique_ptr<AdvXMLParser::Document> doc = parser.Parse(r.text.data(), r.text.size());
        held = watch.Held();
        peak = watch.Peak();
        benchmark::DoNotOptimize(doc.get());
    }
    SetCounters(state, r, held, peak, MinorFaults() - faults);
}

void* PugiAllocate(std::size_t n) { return Counted(std::malloc(n)); }
void PugiDeallocate(void* p) { Uncounted(p); }

void BM_Pugixml(benchmark::State& state) {
    const Request& r = RequestOf(static_cast<std::size_t>(state.range(0)));
    pugi::set_memory_management_functions(PugiAllocate, PugiDeallocate);
    std::size_t held = 0, peak = 0;
    const long faults = MinorFaults();
    for (auto _ : state) {
        HeapWatch watch;
        pugi::xml_document doc;
        const pugi::xml_parse_result result = doc.load_buffer(r.text.data(), r.text.size() * sizeof(char16_t),
                                                              pugi::parse_default, pugi::encoding_utf16_le);
        if (!result) state.SkipWithError("pugixml failed");
        held = watch.Held();
        peak = watch.Peak();
        benchmark::DoNotOptimize(doc.first_child());
    }
    SetCounters(state, r, held, peak, MinorFaults() - faults);
}

// Writing a reply-sized tree that callers build, for the record.
void BM_OursWriteParsed(benchmark::State& state) {
    const Request& r = RequestOf(static_cast<std::size_t>(state.range(0)));
    AdvXMLParser::Parser parser;
    auto doc = parser.Parse(r.text.data(), r.text.size());
    std::u16string out;
    for (auto _ : state) {
        AdvXMLParser::WriteDocument(*doc, out);
        benchmark::DoNotOptimize(out.data());
    }
    state.counters["ns_per_element"] =
        benchmark::Counter(static_cast<double>(r.elements) * 1e-9,
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

}  // namespace

#define QRL_SIZES ->Arg(100 * 1000)->Arg(1000 * 1000)->Arg(10 * 1000 * 1000)->Unit(benchmark::kMillisecond)
BENCHMARK(BM_Ours)->Name("default/ours") QRL_SIZES;
BENCHMARK(BM_Pugixml)->Name("default/pugixml") QRL_SIZES;
BENCHMARK(BM_Ours)->Name("warm/ours")->Setup(WarmHeap) QRL_SIZES;
BENCHMARK(BM_Pugixml)->Name("warm/pugixml")->Setup(WarmHeap) QRL_SIZES;
BENCHMARK(BM_OursWriteParsed)->Name("warm/ours_write")->Setup(WarmHeap)->Arg(1000 * 1000)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
