// The container templates beside the standard containers doing the same work on 100,000 elements.
// Benchmarks are named "work/qv:Name" or "work/ref:Name"; run.sh divides each qv time by the ref time of
// the same work.

#include "tooldeck/containers/QvDList.h"
#include "tooldeck/containers/QvDynArray.h"
#include "tooldeck/containers/QvXList.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <iterator>
#include <list>
#include <random>
#include <vector>

namespace {

constexpr long kCount = 100000;
constexpr int kMoves = 1000;

// Many equal keys, as the geometry code's coordinates have.
const std::vector<double>& Keys() {
    static const std::vector<double> keys = [] {
        std::mt19937 rng(42);
        std::vector<double> v(kCount);
        for (double& k : v) k = static_cast<double>(rng() % 1000);
        return v;
    }();
    return keys;
}

const std::vector<long>& Positions() {
    static const std::vector<long> positions = [] {
        std::mt19937 rng(7);
        std::vector<long> v(kMoves);
        for (long& p : v) p = static_cast<long>(rng() % kCount);
        return v;
    }();
    return positions;
}

template <class Container> void FillQv(Container& c) {
    for (double k : Keys()) c.Append(k);
}

void AppendQvArray(benchmark::State& state, long allocUnit) {
    for (auto _ : state) {
        QvDynArray<double> a(0, allocUnit);
        FillQv(a);
        benchmark::DoNotOptimize(a.GetLast());
    }
}
void AppendVector(benchmark::State& state) {
    for (auto _ : state) {
        std::vector<double> v;
        for (double k : Keys()) v.push_back(k);
        benchmark::DoNotOptimize(v.data());
    }
}
void AppendQvDList(benchmark::State& state) {
    for (auto _ : state) {
        QvDList<double> list;
        FillQv(list);
        benchmark::DoNotOptimize(list.GetLast());
    }
}
void AppendStdList(benchmark::State& state) {
    for (auto _ : state) {
        std::list<double> list;
        for (double k : Keys()) list.push_back(k);
        benchmark::DoNotOptimize(&list.back());
    }
}

template <class Container> void SortQv(benchmark::State& state) {
    Container c;
    for (auto _ : state) {
        state.PauseTiming();
        c.Reset();
        FillQv(c);
        state.ResumeTiming();
        c.Sort(true);
        benchmark::DoNotOptimize(c.GetFirst());
    }
}
void SortVector(benchmark::State& state) {
    std::vector<double> v;
    for (auto _ : state) {
        state.PauseTiming();
        v = Keys();
        state.ResumeTiming();
        std::stable_sort(v.begin(), v.end());
        benchmark::DoNotOptimize(v.data());
    }
}
void SortStdList(benchmark::State& state) {
    std::list<double> list;
    for (auto _ : state) {
        state.PauseTiming();
        list.assign(Keys().begin(), Keys().end());
        state.ResumeTiming();
        list.sort();
        benchmark::DoNotOptimize(&list.front());
    }
}

// A key that is not there: every element is compared.
template <class Container> void FindQv(benchmark::State& state) {
    Container c;
    FillQv(c);
    for (auto _ : state) benchmark::DoNotOptimize(c.Find(-1.0));
}
template <class Std> void FindStd(benchmark::State& state) {
    const Std c(Keys().begin(), Keys().end());
    for (auto _ : state) benchmark::DoNotOptimize(std::find(c.begin(), c.end(), -1.0));
}

template <class Container> void MoveQv(benchmark::State& state, Container& c) {
    FillQv(c);
    for (auto _ : state) {
        double sum = 0;
        for (long p : Positions()) {
            c.MoveTo(p);
            sum += c.GetCurData();
        }
        benchmark::DoNotOptimize(sum);
    }
}
void MoveQvXList(benchmark::State& state) {
    QvXList<double> list(0, 25, 100);
    MoveQv(state, list);
}
void MoveQvDList(benchmark::State& state) {
    QvDList<double> list;
    MoveQv(state, list);
}
void MoveStdList(benchmark::State& state) {
    const std::list<double> list(Keys().begin(), Keys().end());
    for (auto _ : state) {
        double sum = 0;
        for (long p : Positions()) sum += *std::next(list.begin(), p);
        benchmark::DoNotOptimize(sum);
    }
}

void Register() {
    using benchmark::RegisterBenchmark;
    const auto ms = benchmark::kMillisecond;
    RegisterBenchmark("append array/qv:QvDynArray(0,10)", AppendQvArray, 10L)->Unit(ms);
    RegisterBenchmark("append array/qv:QvDynArray(0,100000)", AppendQvArray, kCount)->Unit(ms);
    RegisterBenchmark("append array/ref:std::vector", AppendVector)->Unit(ms);
    RegisterBenchmark("append list/qv:QvDList", AppendQvDList)->Unit(ms);
    RegisterBenchmark("append list/ref:std::list", AppendStdList)->Unit(ms);
    RegisterBenchmark("sort array/qv:QvDynArray::Sort", SortQv<QvDynArray<double>>)->Unit(ms);
    RegisterBenchmark("sort array/ref:std::stable_sort", SortVector)->Unit(ms);
    RegisterBenchmark("sort list/qv:QvDList::Sort", SortQv<QvDList<double>>)->Unit(ms);
    RegisterBenchmark("sort list/ref:std::list::sort", SortStdList)->Unit(ms);
    RegisterBenchmark("find array/qv:QvDynArray::Find", FindQv<QvDynArray<double>>)->Unit(ms);
    RegisterBenchmark("find array/ref:std::find(vector)", FindStd<std::vector<double>>)->Unit(ms);
    RegisterBenchmark("find list/qv:QvDList::Find", FindQv<QvDList<double>>)->Unit(ms);
    RegisterBenchmark("find list/ref:std::find(list)", FindStd<std::list<double>>)->Unit(ms);
    RegisterBenchmark("indexed move x1000/qv:QvXList::MoveTo", MoveQvXList)->Unit(ms);
    RegisterBenchmark("indexed move x1000/qv:QvDList::MoveTo", MoveQvDList)->Unit(ms);
    RegisterBenchmark("indexed move x1000/ref:std::next(list)", MoveStdList)->Unit(ms);
}

} // namespace

int main(int argc, char** argv) {
    Register();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
