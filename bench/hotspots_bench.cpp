// A hotspot set is read, edited and saved with time linear in its size: reported per hotspot, for
// sets of 100 and 1,000; compare the two.
#include <benchmark/benchmark.h>

#include "hotspots/hotspotfile.h"
#include "hotspots/hotspotrules.h"
#include "text/textutil.h"

#include <filesystem>
#include <fstream>
#include <string>

namespace {

namespace fs = std::filesystem;

// A file of one set of `count` hotspots, written directly.
std::u16string makeFile(int count) {
    const fs::path path = fs::temp_directory_path() / ("qrl_hotspots_bench_" + std::to_string(count) + ".hsp");
    std::ofstream out(path, std::ios::binary);
    out << "[version]\r\nVersion=2\r\n[Bench]\r\nBGndColour=192,192,192\r\n";
    for (int n = 1; n <= count; ++n) {
        qrl::HotSpot spot;
        spot.description = u"Spot " + qrl::decimal((n * 7919) % count);  // not in order: reading sorts
        spot.recordType = qrl::kRecordText;
        spot.matchString = u"F" + qrl::decimal(n);
        spot.sendString = u"{Enter}";
        const std::u16string record = qrl::FormatHotSpotRecord(spot);
        out << "HS" << n << "=" << std::string(record.begin(), record.end()) << "\r\n";
    }
    return path.u16string();
}

void perSpot(benchmark::State& state) {
    state.counters["per_spot"] = benchmark::Counter(static_cast<double>(state.iterations()) * state.range(0),
                                                    benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void BM_ReadSet(benchmark::State& state) {
    const std::u16string file = makeFile(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        qrl::HotSpots set;
        set.Read(file.c_str(), u"Bench");
        benchmark::DoNotOptimize(set.spots.size());
    }
    perSpot(state);
}

// One edit as the dialog makes it (the record replaced, the list sorted), then the save.
void BM_EditAndSave(benchmark::State& state) {
    const std::u16string file = makeFile(static_cast<int>(state.range(0)));
    qrl::HotSpots set;
    set.Read(file.c_str(), u"Bench");
    for (auto _ : state) {
        qrl::HotSpot edited = set.spots.front();
        edited.description += u"x";
        qrl::ApplyEditedHotSpot(set, edited.id, edited);
        set.Write(file.c_str(), nullptr);
    }
    perSpot(state);
}

BENCHMARK(BM_ReadSet)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_EditAndSave)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
