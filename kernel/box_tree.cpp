#include "kernel/box_tree.h"

#include <algorithm>
#include <utility>

#include "numeric/scalar.h"

namespace halvorn {

namespace {

std::size_t At(int index) {
    return static_cast<std::size_t>(index);
}

// Twice the centre of a box in x or y. A NaN has no place in any order; it counts as 0.
double CentreOf(const KBox& box, bool inX) {
    const double centre = inX ? box.low.x + box.high.x : box.low.y + box.high.y;
    return centre == centre ? centre : 0.0;
}

void BuildNode(KBoxTree* tree, int node, int first, int last) {
    int* const items = tree->items.get();
    const auto boxOf = [tree, items](int i) -> const KBox& { return tree->boxes[At(items[i])]; };
    KBox around = boxOf(first);
    double low[2] = {UNDEFINED_VALUE, UNDEFINED_VALUE};
    double high[2] = {-UNDEFINED_VALUE, -UNDEFINED_VALUE};
    for (int i = first; i < last; ++i) {
        around = KBoxAround(around, boxOf(i));
        for (const bool inX : {false, true}) {
            low[inX] = MinValue(CentreOf(boxOf(i), inX), low[inX]);
            high[inX] = MaxValue(CentreOf(boxOf(i), inX), high[inX]);
        }
    }
    tree->nodes[At(node)] = around;
    tree->live[At(node)] = last - first;
    if (last - first <= KBoxTree::kLeafSize) return;
    const bool inX = high[1] - low[1] > high[0] - low[0];
    const int middle = first + (last - first) / 2;
    std::nth_element(items + first, items + middle, items + last, [tree, inX](int i, int j) {
        return CentreOf(tree->boxes[At(i)], inX) < CentreOf(tree->boxes[At(j)], inX);
    });
    BuildNode(tree, 2 * node + 1, first, middle);
    BuildNode(tree, 2 * node + 2, middle, last);
}

// Nodes of the tree: a full binary tree down to runs of at most a leaf's size.
std::size_t NodeCount(int n) {
    std::size_t leaves = 1;
    for (int run = n; run > KBoxTree::kLeafSize; run = (run + 1) / 2) leaves *= 2;
    return 2 * leaves;
}

}  // namespace

int KBuildBoxTree(KBoxTree* tree, CArray<KBox> boxes, int n) {
    tree->count = n;
    tree->boxes = std::move(boxes);
    tree->nodes = AllocateZeroed<KBox>(NodeCount(n));
    tree->live = AllocateZeroed<int>(NodeCount(n));
    tree->items = AllocateZeroed<int>(At(n));
    tree->places = AllocateZeroed<int>(At(n));
    if (!tree->nodes || !tree->live || (n > 0 && (!tree->items || !tree->places))) {
        return kOutOfMemory;
    }
    if (n == 0) return 0;
    for (int i = 0; i < n; ++i) tree->items[At(i)] = i;
    BuildNode(tree, 0, 0, n);
    for (int i = 0; i < n; ++i) tree->places[At(tree->items[At(i)])] = i;
    return 0;
}

void KRemoveFromBoxTree(KBoxTree* tree, int item) {
    const int place = tree->places[At(item)];
    if (tree->items[At(place)] < 0) return;
    tree->items[At(place)] = -1;
    int first = 0;
    int last = tree->count;
    for (int node = 0;;) {
        --tree->live[At(node)];
        if (last - first <= KBoxTree::kLeafSize) return;
        const int middle = first + (last - first) / 2;
        const bool isLeft = place < middle;
        node = 2 * node + (isLeft ? 1 : 2);
        (isLeft ? last : first) = middle;
    }
}

}  // namespace halvorn
