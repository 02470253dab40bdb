// The scheme check of Colour Configuration over every combination (256, all shown), once per
// preview: the target is well under 10 ms a check.
#include <benchmark/benchmark.h>

#include "colours/colourtexts.h"
#include "colours/colourvision.h"

namespace {

void SchemeCheckOfEveryCombination(benchmark::State& state) {
    qrl::TAttrDialogData data;
    const auto same = [](std::u16string_view, std::u16string_view text) { return std::u16string(text); };
    qrl::LoadAttrDialogNames(data, qrl::TAttrNameTables{}, qrl::MakeColourTexts(same));
    for (uint32_t i = 0; i < qrl::kCombinationCount; ++i) data.working.features[i] = {true, 0, i % 16, (i / 16) % 16};
    qrl::TListOptions options;
    options.all = true;
    options.includeInvisible = true;
    const auto preview = static_cast<qrl::TVisionPreview>(state.range(0));
    std::size_t found = 0;
    for (auto _ : state) {
        const auto findings = qrl::CheckSchemeContrast(data, options, preview);
        found = findings.size();
        benchmark::DoNotOptimize(findings.data());
    }
    state.counters["findings"] = static_cast<double>(found);
}
BENCHMARK(SchemeCheckOfEveryCombination)->DenseRange(0, 4)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
