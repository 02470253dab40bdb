// The settings search runs on every keystroke over the whole tree: 10,000 elements must filter in
// well under 30 ms. Each case is one keystroke's filter, from a text that keeps almost everything
// to one that keeps a single element, with and without "Customised only".
#include <benchmark/benchmark.h>

#include "../tools/genrequest/generate.h"
#include "forms/formdef.h"
#include "forms/settingsfilter.h"
#include "request/session.h"

#include <set>

namespace {

struct Tree {
    qrl::TConfigSession session;
    qrl::TFormDef form;
    std::vector<qrl::TreeInsertion> plan;

    explicit Tree(std::size_t count) {
        session.LoadRequestText(qrl::gen::MakeRequest(count));
        session.ApplyDataValues();
        // The generated request lists no groups; list every path and its parents, so that the tree
        // is as deep as a real one.
        std::set<std::u16string> paths;
        for (const qrl::TElementDef& e : session.elements) {
            const std::u16string group = e.group.str();
            for (std::size_t dot = group.find(u'.'); dot != std::u16string::npos; dot = group.find(u'.', dot + 1))
                paths.insert(group.substr(0, dot));
            paths.insert(group);
        }
        auto& store = session.Part<qrl::TFormStore>();
        for (const std::u16string& path : paths) {
            if (path.empty()) continue;
            qrl::TGroupDef& g = store.groups.emplace_back();
            g.name = path;
            store.groupIndex.Add(g.name, &g);
        }
        plan = qrl::BuildTreeIndex(form, session);
    }
};

const char16_t* const kSearches[] = {u"s", u"setting", u"number 42", u"number 9999", u"RGB=", u"zzz"};

void BM_FilterKeystroke(benchmark::State& state) {
    Tree tree(static_cast<std::size_t>(state.range(0)));
    qrl::TSettingsFilter filter(tree.form, tree.plan);
    const std::u16string search = kSearches[state.range(1)];
    const bool customised = state.range(2) != 0;
    std::size_t matches = 0;
    for (auto _ : state) {
        matches = filter.Apply(search, customised).matches.size();
        benchmark::DoNotOptimize(matches);
    }
    state.counters["matches"] = static_cast<double>(matches);
}
BENCHMARK(BM_FilterKeystroke)
    ->ArgsProduct({{10000}, {0, 1, 2, 3, 4, 5}, {0, 1}})
    ->Unit(benchmark::kMillisecond);

// The filter is made once per dialog, when the tree is filled: no text is folded yet.
void BM_FilterSetUp(benchmark::State& state) {
    Tree tree(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        qrl::TSettingsFilter filter(tree.form, tree.plan);
        benchmark::DoNotOptimize(filter.Parents().size());
    }
}
BENCHMARK(BM_FilterSetUp)->Arg(10000)->Unit(benchmark::kMillisecond);

// The first keystroke also folds every element's texts, which the dialog leaves until then.
void BM_FirstKeystroke(benchmark::State& state) {
    Tree tree(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        qrl::TSettingsFilter filter(tree.form, tree.plan);
        benchmark::DoNotOptimize(filter.Apply(u"s", false).matches.size());
    }
}
BENCHMARK(BM_FirstKeystroke)->Arg(10000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
