#include "kernel/edge_graph.h"

#include <algorithm>
#include <cstddef>

#include "kernel/vectors.h"
#include "numeric/scalar.h"

namespace halvorn {

namespace {

std::size_t At(int index) {
    return static_cast<std::size_t>(index);
}

void RemoveNeedles(double tol, KEdgeGraph* graph) {
    const KSplitRing& split = *graph->split;
    const int n = split.count;
    int first = 0;
    while (first < n && split.cutPointOf[At(first)] < 0) ++first;
    if (first == n) return;
    for (int start = first, end = 0; start < first + n; start = end) {
        double area = 0.0;
        double length = 0.0;
        const KPoint& origin = split.vertices[At(start % n)];
        for (end = start + 1;; ++end) {
            KPoint in;
            KPoint out;
            KVectorDiff(&in, &origin, &split.vertices[At((end - 1) % n)]);
            KVectorDiff(&out, &split.vertices[At((end - 1) % n)], &split.vertices[At(end % n)]);
            area += 0.5 * KCross(&in, &out);
            length += AbsValue(out.x) + AbsValue(out.y);
            if (split.cutPointOf[At(end % n)] >= 0) break;
        }
        const bool comesBack = split.cutPointOf[At(end % n)] == split.cutPointOf[At(start % n)];
        if (!comesBack || AbsValue(area) > tol * length) continue;
        for (int i = start; i < end; ++i) graph->Live(i % n) = false;
    }
}

// What joins at a cut point: the number of ends of live edges, edges back not counted, and the
// exclusive or of the numbers of the live stretches among them. When one end is left, that is the
// number of its stretch.
struct Junction {
    int ends;
    int stretches;
};

// The junctions of a graph, kept while stretches are removed.
struct Junctions {
    KEdgeGraph* graph;
    CArray<Junction> at;  // per cut point

    const KStretch& Ends(int stretch) const { return graph->split->stretches[At(stretch)]; }

    void Change(int stretch, int by) {
        for (const int cutPoint : {Ends(stretch).start, Ends(stretch).end}) {
            at[At(cutPoint)].ends += by;
            at[At(cutPoint)].stretches ^= stretch;
        }
    }

    void Remove(int stretch) {
        const int there = graph->PolygonEdgeCount() + 2 * stretch;
        graph->Live(there) = graph->Live(there + 1) = false;
        Change(stretch, -1);
    }

    // Removes a chain of stretches from its free end to where something else goes on.
    void RemoveChainFrom(int cutPoint) {
        while (at[At(cutPoint)].ends == 1) {
            const int stretch = at[At(cutPoint)].stretches;
            Remove(stretch);
            cutPoint = Ends(stretch).start == cutPoint ? Ends(stretch).end : Ends(stretch).start;
        }
    }
};

// Removes stretches that end freely, and those that end freely once these are gone. The ring's own
// edges never do: what `RemoveNeedles` keeps of the ring leaves every cut point as often as it
// arrives there.
int PruneDanglingStretches(KEdgeGraph* graph) {
    const KSplitRing& split = *graph->split;
    Junctions junctions{graph, AllocateZeroed<Junction>(At(split.cutPointCount))};
    if (!junctions.at && split.cutPointCount > 0) return kOutOfMemory;
    for (int e = 0; e < graph->PolygonEdgeCount(); ++e) {
        if (!graph->Live(e)) continue;
        for (const int cutPoint : {graph->StartCutPoint(e), graph->EndCutPoint(e)}) {
            if (cutPoint >= 0) ++junctions.at[At(cutPoint)].ends;
        }
    }
    for (int k = 0; k < split.stretchCount; ++k) junctions.Change(k, 1);
    // A stretch within one cut point encloses nothing.
    for (int k = 0; k < split.stretchCount; ++k) {
        if (junctions.Ends(k).start == junctions.Ends(k).end) junctions.Remove(k);
    }
    for (int k = 0; k < split.stretchCount; ++k) {
        junctions.RemoveChainFrom(junctions.Ends(k).start);
        junctions.RemoveChainFrom(junctions.Ends(k).end);
    }
    return 0;
}

// Groups the live edges by the cut point that they start at (counting sort, edges ascending).
int IndexOutgoing(KEdgeGraph* graph) {
    const auto cutPointCount = At(graph->split->cutPointCount);
    graph->firstOutgoing = AllocateZeroed<int>(cutPointCount + 2);
    if (!graph->firstOutgoing) return kOutOfMemory;
    CArray<int>& firsts = graph->firstOutgoing;
    const auto forEachStart = [graph](auto&& act) {
        for (int e = 0; e < graph->EdgeCount(); ++e) {
            const int cutPoint = graph->StartCutPoint(e);
            if (cutPoint >= 0 && graph->Live(e)) act(At(cutPoint), e);
        }
    };
    // Counts two places up, so that filling moves each start to where the next group begins.
    forEachStart([&firsts](std::size_t cutPoint, int) { ++firsts[cutPoint + 2]; });
    for (std::size_t k = 2; k < cutPointCount + 2; ++k) firsts[k] += firsts[k - 1];
    const int total = firsts[cutPointCount + 1];
    graph->outgoing = AllocateZeroed<int>(At(total));
    if (!graph->outgoing && total > 0) return kOutOfMemory;
    forEachStart(
        [&](std::size_t cutPoint, int e) { graph->outgoing[At(firsts[cutPoint + 1]++)] = e; });
    return 0;
}

}  // namespace

KSegment KEdgeGraph::Edge(int e) const {
    const int n = split->count;
    if (e < n) return {split->vertices[At(e)], split->vertices[At(e + 1 < n ? e + 1 : 0)]};
    return {split->cutPoints[At(StartCutPoint(e))], split->cutPoints[At(EndCutPoint(e))]};
}

int KEdgeGraph::StartCutPoint(int e) const {
    const int n = split->count;
    if (e < n) return split->cutPointOf[At(e)];
    const KStretch& stretch = split->stretches[At((e - n) / 2)];
    return (e - n) % 2 == 0 ? stretch.start : stretch.end;
}

int KEdgeGraph::EndCutPoint(int e) const {
    const int n = split->count;
    if (e < n) return split->cutPointOf[At(e + 1 < n ? e + 1 : 0)];
    const KStretch& stretch = split->stretches[At((e - n) / 2)];
    return (e - n) % 2 == 0 ? stretch.end : stretch.start;
}

int KBuildEdgeGraph(KEdgeGraph* graph, const KSplitRing& split, double tol) {
    graph->split = &split;
    graph->isLive = AllocateZeroed<bool>(At(graph->EdgeCount()));
    if (!graph->isLive && graph->EdgeCount() > 0) return kOutOfMemory;
    std::fill_n(graph->isLive.get(), graph->EdgeCount(), true);
    RemoveNeedles(tol, graph);
    const int status = split.hasFreeEnd ? PruneDanglingStretches(graph) : 0;
    return status == 0 ? IndexOutgoing(graph) : status;
}

}  // namespace halvorn
