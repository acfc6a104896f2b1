/// @file box_tree.h
/// Finds, among many boxes, those that meet a given box, without looking at most of them.
#ifndef HALVORN_KERNEL_BOX_TREE_H
#define HALVORN_KERNEL_BOX_TREE_H

#include <cstddef>

#include "kernel/kernel.h"
#include "numeric/c_array.h"
#include "numeric/scalar.h"

namespace halvorn {

/// An axis-parallel box; of a point, both corners are the point.
struct KBox {
    KPoint low;
    KPoint high;
};

/// Returns the box of the segment from `a` to `b`, wider by `margin` on every side.
inline KBox KBoxOfSegment(const KPoint& a, const KPoint& b, double margin) {
    return {{MinValue(a.x, b.x) - margin, MinValue(a.y, b.y) - margin},
            {MaxValue(a.x, b.x) + margin, MaxValue(a.y, b.y) + margin}};
}

/// Returns the box around two boxes.
inline KBox KBoxAround(const KBox& a, const KBox& b) {
    return {{MinValue(a.low.x, b.low.x), MinValue(a.low.y, b.low.y)},
            {MaxValue(a.high.x, b.high.x), MaxValue(a.high.y, b.high.y)}};
}

/// Returns whether two boxes have a point in common.
inline bool KBoxesMeet(const KBox& a, const KBox& b) {
    return a.low.x <= b.high.x && b.low.x <= a.high.x && a.low.y <= b.high.y && b.low.y <= a.high.y;
}

/// A balanced tree of boxes, split at the median of their centres across the longer extent. A
/// uniform grid would be simpler, but fails on one long side beside a fine fillet.
///
/// Node k has the children 2k + 1 and 2k + 2, which share its run of items half and half; runs of
/// up to `kLeafSize` items are not split. Item i is box i of those that the tree was built from.
struct KBoxTree {
    static constexpr int kLeafSize = 4;

    int count = 0;
    CArray<KBox> boxes;  ///< as built from, in item order
    CArray<KBox> nodes;  ///< of each node, around its items
    CArray<int> live;    ///< of each node: items not removed
    CArray<int> items;   ///< in tree order
    CArray<int> places;  ///< of each item: its index in `items`
};

/// Builds a tree of the n entries of `boxes`, which the caller has filled.
/// @return 0, or -90 when memory is exhausted. Cost: n log n.
int KBuildBoxTree(KBoxTree* tree, CArray<KBox> boxes, int n);

/// Removes an item. Cost: log n.
void KRemoveFromBoxTree(KBoxTree* tree, int item);

/// Calls visit(item) for each live item whose box satisfies meets(box), until one call returns
/// true; returns whether one did. Where `meets` holds for a box, it must hold for every box around
/// it. `node` has the items from `first` up to `last`; the recursion is about log n deep.
template <class Meets, class Visit>
bool KVisitBoxTree(const KBoxTree& tree, const Meets& meets, const Visit& visit, int node,
                   int first, int last) {
    const auto at = static_cast<std::size_t>(node);
    if (tree.live[at] == 0 || !meets(tree.nodes[at])) return false;
    if (last - first <= KBoxTree::kLeafSize) {
        for (int i = first; i < last; ++i) {
            const int item = tree.items[static_cast<std::size_t>(i)];
            if (item < 0 || !meets(tree.boxes[static_cast<std::size_t>(item)])) continue;
            if (visit(item)) return true;
        }
        return false;
    }
    const int middle = first + (last - first) / 2;
    return KVisitBoxTree(tree, meets, visit, 2 * node + 1, first, middle) ||
           KVisitBoxTree(tree, meets, visit, 2 * node + 2, middle, last);
}

/// The same from the root; false for an empty tree.
template <class Meets, class Visit>
bool KVisitBoxTree(const KBoxTree& tree, const Meets& meets, const Visit& visit) {
    return tree.count > 0 && KVisitBoxTree(tree, meets, visit, 0, 0, tree.count);
}

}  // namespace halvorn

#endif
