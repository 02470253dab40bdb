// Checking a key map must answer at once on a large map: 5,000 entries in well under 50 ms. The
// map has every kind of finding in bulk: duplicates, codes in several lists, unknown codes and
// emulation keys, keys Windows keeps.
#include <benchmark/benchmark.h>

#include "keyboard/keymapcheck.h"
#include "text/textutil.h"

namespace {

qrl::TKeyData LargeMap(std::size_t count) {
    qrl::TKeyData keys;
    for (int32_t id = 1; id <= 250; ++id) {
        keys.physicalKeys.push_back({u"K" + qrl::decimal(id), id, 1792});
        keys.emulationKeys.push_back({u"E" + qrl::decimal(id), id, 0});
    }
    for (std::size_t i = 0; i < count; ++i) {
        // Codes repeat after 2,000 entries, and some ids lie past both key lists.
        const auto pkey = static_cast<uint32_t>(1 + i % 260 + 256 * ((i / 260) % 8));
        keys.keyMap.push_back({pkey, static_cast<uint32_t>(1 + i % 300)});
        if (i % 10 == 0) keys.keyStrings.push_back({pkey, u"text " + qrl::decimal(static_cast<long long>(i))});
        if (i % 25 == 0) keys.globalKeyStrings.push_back({pkey, u"global"});
    }
    return keys;
}

void BM_KeyMapCheck(benchmark::State& state) {
    const qrl::TKeyData keys = LargeMap(static_cast<std::size_t>(state.range(0)));
    std::size_t findings = 0;
    for (auto _ : state) {
        findings = qrl::CheckKeyMap(keys).size();
        benchmark::DoNotOptimize(findings);
    }
    state.counters["findings"] = static_cast<double>(findings);
}
BENCHMARK(BM_KeyMapCheck)->Arg(5000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
