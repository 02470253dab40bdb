// Opening the Macro Assistant on a long macro parses the text and builds the token list; both
// must stay linear in the text's size. Reported per token: compare the sizes.
#include <benchmark/benchmark.h>

#include "macro/macroassist.h"

#include <string>

namespace {

// A macro of about `bytes` characters mixing every kind of token the list shows.
std::u16string makeMacro(std::size_t bytes) {
    static const std::u16string kPiece =
        u"Hello\\r{Enter}{.Pause(5)}{%if(r=1)}{%goto :done}{%endif}\\p010{.SetProp(\"a\",\"b\")}\\x41{:done}";
    std::u16string text;
    while (text.size() < bytes) text += kPiece;
    return text;
}

void BM_OpenAssistant(benchmark::State& state) {
    const std::u16string text = makeMacro(static_cast<std::size_t>(state.range(0)));
    int tokens = 0;
    for (auto _ : state) {
        qrl::TMacroAssist assist(7, {u"Enter"});
        assist.Parse(text);
        assist.Select(0);
        const auto rows = assist.Rows();
        tokens = static_cast<int>(rows.size());
        benchmark::DoNotOptimize(assist.Joined());
    }
    state.counters["per_token"] = benchmark::Counter(static_cast<double>(state.iterations()) * tokens,
                                                     benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
    state.counters["tokens"] = tokens;
}
BENCHMARK(BM_OpenAssistant)->Arg(1 << 10)->Arg(10 << 10)->Arg(100 << 10)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
