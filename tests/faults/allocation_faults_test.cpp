// Every operation with its first, second, third ... allocation failing. Exported operations throw
// std::bad_alloc and leave the section as it was, kernel routines return their status; nothing
// leaks.
#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <functional>
#include <new>

#include "failing_heap.h"
#include "kernel/box_tree.h"
#include "kernel/classify_polygon.h"
#include "kernel/cut_polygon.h"
#include "kernel/polygon_centroid.h"
#include "kernel/triangulate_polygon.h"
#include "unit/section_access.h"

namespace {

using namespace halvorn;
using test_support::Attempt;
using test_support::heap;
using test_support::Outcome;

// Calls `scenario` with the k-th allocation failing, for k = 1, 2, ... until all succeed. A
// scenario attempts one operation, checks what it left and returns the outcome.
void FailEach(const char* name, const std::function<Outcome()>& scenario) {
    SCOPED_TRACE(name);
    bool failed = true;
    for (long k = 1; failed; ++k) {
        SCOPED_TRACE("allocation " + std::to_string(k));
        const long live = heap.live;
        heap.count = 0;
        heap.failing = k;
        failed = scenario().failed;
        ASSERT_EQ(heap.live, live) << "blocks leaked";
        ASSERT_LT(k, 1000);
        EXPECT_TRUE(failed || k > 1) << "allocates nothing";
    }
}

std::vector<double> channel = {0, 0, 8, 0, 8, 1, 1, 1, 1, 9, 8, 9, 8, 10, 0, 10};
const KPoint* const ring = reinterpret_cast<const KPoint*>(channel.data());
constexpr int n = 8;

std::array<double, 18> Sums(const CSectionTools& section) {
    const SectionAccess s(section);
    return {s.NbContours,
            s.Area,
            s.Ixx,
            s.Wt,
            s.ShearAreaY,
            s.ShearAreaZ,
            s.SecondMomentX0,
            s.SecondMomentY0,
            s.ProductMoment0,
            s.MomentAX,
            s.MomentAY,
            s.XMin,
            s.XMax,
            s.YMin,
            s.YMax,
            s.Wplx,
            s.Wply,
            s.ExtraSum};
}

void Push(CSectionTools& section) {
    section.PushContour(n, channel.data(), 1);
}
void PushStandard(CSectionTools& section) {
    section.PushContourStandard(n, channel.data(), 0.1, 3, 5, 24, 1, 2, 3, 4, 5, 0, 6, 7, 8, 9, 1);
}
void Plastic(CSectionTools& section) {
    double wplx = 0, wply = 0;
    section.ComputeWplasticValues(wplx, wply);
    EXPECT_TRUE(heap.armed || wplx > 0);
}
void AllValues(CSectionTools& section) {
    std::array<double, 17> v{};
    section.GetCalculValues(0, 0, &v[0], &v[1], &v[2], &v[3], &v[4], &v[5], &v[6], &v[7], &v[8],
                            &v[9], &v[10], &v[11], &v[12], &v[13], &v[14], &v[15], &v[16]);
    EXPECT_TRUE(heap.armed || v[3] > 0);
}
template <int isThin, int isOpen>
void ContourQuelconque(CSectionTools& section) {
    std::array<double, 8> v{};
    std::pair<double, double> cdg;
    section.CalculContourQuelconqueTOOL(isThin, isOpen, 1, 4, 0.2,
                                        {{0, 0}, {8, 0}, {8, 10}, {0, 10}}, {0.5, 0.5}, v[0], cdg,
                                        v[1], v[2], v[3], v[4], v[5], v[6], v[7]);
    EXPECT_TRUE(heap.armed || v[0] > 0);
}

TEST(AllocationFaults, ExportedOperationsThrowAndLeaveTheSectionAsItWas) {
    const std::pair<const char*, void (*)(CSectionTools&)> operations[] = {
        {"PushContour", Push},
        {"PushContourStandard", PushStandard},
        {"ComputeWplasticValues", Plastic},
        {"GetCalculValues", AllValues},
        {"copy", [](CSectionTools& section) { CSectionTools copy(section); }},
        {"solid contour", ContourQuelconque<0, 0>},
        {"closed wall", ContourQuelconque<1, 0>},
        {"open wall", ContourQuelconque<1, 1>}};
    for (const auto& [name, operation] : operations) {
        FailEach(name, [operation = operation] {
            CSectionTools section, untouched;
            for (CSectionTools* each : {&section, &untouched}) Push(*each), PushStandard(*each);
            const Outcome outcome = Attempt([&] { operation(section); });
            EXPECT_EQ(outcome.threw, outcome.failed);
            if (outcome.threw) {
                EXPECT_EQ(Sums(section), Sums(untouched));
                EXPECT_EQ(SectionAccess(section).Contours.size(), 2U);
                operation(section);
            }
            operation(untouched);
            EXPECT_EQ(Sums(section), Sums(untouched));
            Plastic(section);
            return outcome;
        });
    }
}

TEST(AllocationFaults, AnAssignmentThrowsAndItsTargetCanBeAssignedAgain) {
    for (const int held : {0, 1, 3}) {
        FailEach("assignment", [held] {
            CSectionTools source, target;
            for (int i = 0; i < 4; ++i) Push(source);
            for (int i = 0; i < held; ++i) PushStandard(target);
            const auto before = Sums(source);
            const Outcome outcome = Attempt([&] { target = source; });
            EXPECT_EQ(outcome.threw, outcome.failed);
            EXPECT_EQ(Sums(source), before);
            AllValues(target);
            target = source;
            EXPECT_EQ(Sums(target), before);
            EXPECT_EQ(SectionAccess(target).Contours.size(), 4U);
            return outcome;
        });
    }
}

TEST(AllocationFaults, MovesAllocateNothing) {
    CSectionTools source, target;
    Push(source), Push(target);
    heap.count = heap.failing = 0;
    Attempt([&] { target = CSectionTools(std::move(source)); });
    EXPECT_EQ(heap.count, 0);
    EXPECT_EQ(SectionAccess(target).Contours.size(), 1U);
}

// `cut` writes pieces and returns its status, which is `failure` when memory is exhausted.
void FailEachCut(const char* name, int failure, const std::function<int(KPieces&)>& cut) {
    FailEach(name, [&] {
        KPieces pieces;
        pieces.count = 7;
        pieces.ranges = &pieces.count;  // not the heap's: freed unless the cut writes over it
        int status = 99;
        const Outcome outcome = Attempt([&] { status = cut(pieces); });
        EXPECT_FALSE(outcome.threw);
        EXPECT_EQ(status, outcome.failed ? failure : 1);
        EXPECT_EQ(pieces.count > 0, !outcome.failed);
        EXPECT_EQ(pieces.ranges == nullptr, outcome.failed);
        EXPECT_EQ(pieces.points == nullptr, outcome.failed);
        return outcome;
    });
}

TEST(AllocationFaults, CutsReturnTheirStatusAndNoPieces) {
    FailEachCut("line", 0, [](KPieces& p) {
        return KCutPolygonByLine(ring, n, {4, 0}, {4, 1}, 1e-10, &p.count, &p.ranges, &p.points);
    });
    // The bend, and a third segment that ends freely, lie inside the ring.
    const KPoint cut[] = {{-1, 5}, {0.5, 5}, {0.5, 5}, {0.5, 11}, {0.5, 5}, {0.7, 5}};
    for (const int points : {0, 6}) {
        FailEachCut("polyline", kOutOfMemory, [&](KPieces& p) {
            return KSplitPolygonByPolyline(ring, n, cut, points, 1e-10, &p.count, &p.ranges,
                                           &p.points);
        });
    }
}

TEST(AllocationFaults, OtherKernelRoutinesReturnTheirStatusOrFallBack) {
    FailEach("KClassifyPolygon", [] {
        int status = 99;
        const Outcome outcome = Attempt([&] { status = KClassifyPolygon(ring, n, 1e-9); });
        EXPECT_EQ(status, outcome.failed ? kOutOfMemory : kSimplePolygon);
        return outcome;
    });
    FailEach("KTriangulatePolygon", [] {
        std::array<int, 3 * n> triangles{};
        int status = 99, count = 99;
        const Outcome outcome =
            Attempt([&] { status = KTriangulatePolygon(ring, n, triangles.data(), &count, 1e-9); });
        EXPECT_EQ(status, outcome.failed ? kOutOfMemory : 0);
        EXPECT_EQ(count, outcome.failed ? 0 : n - 2);
        return outcome;
    });
    FailEach("KPolygonCentroid", [] {
        KPoint centroid{};
        const Outcome outcome = Attempt([&] { KPolygonCentroid(&centroid, ring, n, 1e-9); });
        // The average of the vertices; else 8 x 10 at (4, 5) without 7 x 8 at (4.5, 5).
        EXPECT_DOUBLE_EQ(centroid.x, outcome.failed ? 34.0 / 8 : (80 * 4 - 56 * 4.5) / 24);
        EXPECT_DOUBLE_EQ(centroid.y, 5);
        return outcome;
    });
    FailEach("KBuildBoxTree", [] {
        int status = 99;
        KBoxTree tree;
        CArray<KBox> boxes = AllocateZeroed<KBox>(n);
        const Outcome outcome =
            Attempt([&] { status = KBuildBoxTree(&tree, std::move(boxes), n); });
        EXPECT_EQ(status, outcome.failed ? kOutOfMemory : 0);
        return outcome;
    });
}

}  // namespace
