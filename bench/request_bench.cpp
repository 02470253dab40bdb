// Loading, applying and replying must stay linear in the size of a request: names are looked up
// through first-wins indexes, not by walking lists. Reported per element: compare the sizes.
//
// Each stage runs twice per size. First with the C library as it comes: at 100,000 elements every
// iteration faults in fresh pages for its tree (a small run reuses its heap), which on a virtual
// machine adds a third or more. Then "warm/", with freed memory kept: the code alone.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <memory>
#include <vector>

#include "../tools/genrequest/generate.h"
#include "warmheap.h"
#include "request/reply.h"
#include "request/session.h"
#include "xml/node.h"
#include "xml/parser.h"

namespace {

// CPU time per element (the machine is shared, wall time is not ours): an inverted rate.
void finish(benchmark::State& state, std::size_t count) {
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * count));
    state.counters["per_element"] = benchmark::Counter(static_cast<double>(state.iterations() * count),
                                                       benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

// The whole general route without the dialog: parse, load, apply, change a few values, reply.
void BM_RequestRoundTrip(benchmark::State& state) {
    const auto count = static_cast<std::size_t>(state.range(0));
    const std::u16string request = qrl::gen::MakeRequest(count);
    std::size_t replyLength = 0;
    for (auto _ : state) {
        qrl::TConfigSession session;
        session.LoadRequestText(request);
        session.ApplyDataValues();
        for (std::size_t i = 0; i < session.elements.size(); i += 10) session.elements[i].value += u"!";
        const std::u16string reply = qrl::WriteDataReply(session, true);
        replyLength = reply.size();
        benchmark::DoNotOptimize(replyLength);
    }
    finish(state, count);
}

void BM_ParseOnly(benchmark::State& state) {
    const auto count = static_cast<std::size_t>(state.range(0));
    const std::u16string request = qrl::gen::MakeRequest(count);
    AdvXMLParser::Parser parser;
    for (auto _ : state) {
        const std::unique_ptr<AdvXMLParser::Document> document = parser.Parse(request.data(), request.size());
        benchmark::DoNotOptimize(document.get());
    }
    finish(state, count);
}

void BM_LoadOnly(benchmark::State& state) {
    const auto count = static_cast<std::size_t>(state.range(0));
    const std::u16string request = qrl::gen::MakeRequest(count);
    AdvXMLParser::Parser parser;
    const std::unique_ptr<AdvXMLParser::Document> document = parser.Parse(request.data(), request.size());
    for (auto _ : state) {
        qrl::TConfigSession session;
        session.LoadRequest(*document->Root());
        benchmark::DoNotOptimize(session.elements.size());
    }
    finish(state, count);
}

void BM_Apply(benchmark::State& state) {
    const auto count = static_cast<std::size_t>(state.range(0));
    qrl::TConfigSession session;
    session.LoadRequestText(qrl::gen::MakeRequest(count));
    for (auto _ : state) {
        session.ApplyDataValues();
        benchmark::DoNotOptimize(session.elements.back().value.size());
    }
    finish(state, count);
}

void BM_Reply(benchmark::State& state) {
    const auto count = static_cast<std::size_t>(state.range(0));
    qrl::TConfigSession session;
    session.LoadRequestText(qrl::gen::MakeRequest(count));
    session.ApplyDataValues();
    for (std::size_t i = 0; i < session.elements.size(); i += 10) session.elements[i].value += u"!";
    for (auto _ : state) {
        const std::u16string reply = qrl::WriteDataReply(session, true);
        benchmark::DoNotOptimize(reply.size());
    }
    finish(state, count);
}

}  // namespace

// The machine is shared: the fastest repetition is the one its neighbours disturbed least.
double Fastest(const std::vector<double>& times) { return *std::min_element(times.begin(), times.end()); }

#define QRL_SIZES \
    ->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond)->ComputeStatistics("min", Fastest)
#define QRL_STAGES(NAME_PREFIX, SETUP)                                          \
    BENCHMARK(BM_RequestRoundTrip)->Name(NAME_PREFIX "BM_RequestRoundTrip") SETUP QRL_SIZES; \
    BENCHMARK(BM_ParseOnly)->Name(NAME_PREFIX "BM_ParseOnly") SETUP QRL_SIZES;               \
    BENCHMARK(BM_LoadOnly)->Name(NAME_PREFIX "BM_LoadOnly") SETUP QRL_SIZES;                 \
    BENCHMARK(BM_Apply)->Name(NAME_PREFIX "BM_Apply") SETUP QRL_SIZES;                       \
    BENCHMARK(BM_Reply)->Name(NAME_PREFIX "BM_Reply") SETUP QRL_SIZES
QRL_STAGES("", );
QRL_STAGES("warm/", ->Setup(WarmHeap));

BENCHMARK_MAIN();
