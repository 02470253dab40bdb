// The key map route must stay linear in the number of mappings: loading the request's lists,
// storing the settings back with the reply written, and the marks the editor puts on its pictures.
// Reported per mapping: compare the sizes.
#include <benchmark/benchmark.h>

#include <string>

#include "keyboard/graphickeymap.h"
#include "keyboard/keymapsettings.h"
#include "request/reply.h"
#include "request/session.h"
#include "text/textutil.h"

namespace {

void finish(benchmark::State& state, std::size_t count) {
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * count));
    state.counters["per_mapping"] = benchmark::Counter(static_cast<double>(state.iterations() * count),
                                                       benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

// 122 keys on each side, `count` key map entries over them with every modifier combination, and a
// string for every tenth.
std::u16string KeymapRequest(std::size_t count) {
    std::u16string text =
        u"<Config ModuleType=\"KeyMap\"><DTD><Element Name=\"PhysicalKeys\" Type=\"keylist\"/>"
        u"<Element Name=\"EmulationKeys\" Type=\"keylist\"/><Element Name=\"KeyMap\" Type=\"keymaplist\"/>"
        u"<Element Name=\"KeyStrings\" Type=\"keystringlist\"/><Element Name=\"UseOldKeymap\" Type=\"bool\"/>"
        u"</DTD><Data><Item Element=\"PhysicalKeys\">";
    for (int id = 1; id <= 122; ++id)
        text += u"<Key Name=\"K" + qrl::decimal(id) + u"\" Id=\"" + qrl::decimal(id) + u"\" Shift=\"1792\"/>";
    text += u"</Item><Item Element=\"EmulationKeys\">";
    for (int id = 1; id <= 122; ++id) text += u"<Key Name=\"E" + qrl::decimal(id) + u"\" Id=\"" + qrl::decimal(id) + u"\"/>";
    text += u"</Item><Item Element=\"KeyMap\">";
    std::u16string strings;
    for (std::size_t i = 0; i < count; ++i) {
        const auto pkey = qrl::decimal(static_cast<long long>(1 + i % 122 + 256 * ((i / 122) % 8)));
        text += u"<Map pkey=\"" + pkey + u"\" emkey=\"" + qrl::decimal(static_cast<long long>(1 + i % 122)) + u"\"/>";
        if (i % 10 == 0) strings += u"<Map pkey=\"" + pkey + u"\" string=\"text " + pkey + u"\"/>";
    }
    return text + u"</Item><Item Element=\"KeyStrings\">" + strings +
           u"</Item><Item Element=\"UseOldKeymap\" Value=\"0\"/></Data></Config>";
}

void BM_KeymapLoad(benchmark::State& state) {
    const auto count = static_cast<std::size_t>(state.range(0));
    const std::u16string request = KeymapRequest(count);
    for (auto _ : state) {
        qrl::TConfigSession session;
        session.LoadRequestText(request);
        benchmark::DoNotOptimize(qrl::KeyDataOf(session).keyMap.size());
    }
    finish(state, count);
}

void BM_KeymapStoreAndReply(benchmark::State& state) {
    const auto count = static_cast<std::size_t>(state.range(0));
    qrl::TConfigSession session;
    session.LoadRequestText(KeymapRequest(count));
    for (auto _ : state) {
        qrl::KeymapSettings settings(session);
        settings.writeBack();
        const std::u16string reply = qrl::WriteDataReply(session, false);
        benchmark::DoNotOptimize(reply.size());
    }
    finish(state, count);
}

void BM_KeymapMarks(benchmark::State& state) {
    const auto count = static_cast<std::size_t>(state.range(0));
    qrl::TConfigSession session;
    session.LoadRequestText(KeymapRequest(count));
    for (auto _ : state) {
        const qrl::TMappedMarks marks = qrl::MappedMarks(qrl::KeyDataOf(session));
        benchmark::DoNotOptimize(marks.physical.size());
    }
    finish(state, count);
}

}  // namespace

BENCHMARK(BM_KeymapLoad)->Arg(500)->Arg(5000)->Arg(50000);
BENCHMARK(BM_KeymapStoreAndReply)->Arg(500)->Arg(5000)->Arg(50000);
BENCHMARK(BM_KeymapMarks)->Arg(500)->Arg(5000)->Arg(50000);
BENCHMARK_MAIN();
