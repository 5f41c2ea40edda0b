// A tree of boxes over items that lie in a row, neighbours near each other, as the pieces of a contour do.
// Built in linear time; a search costs the logarithm and what it finds.
#pragma once

#include "geometry/piece.h"

#include <bit>
#include <cstddef>
#include <vector>

namespace host {

class BoxTree {
public:
    explicit BoxTree(const std::vector<PieceBox>& boxes) : leaves_(std::bit_ceil(boxes.size() | 1)) {
        const PieceBox none{HUGE_VAL, HUGE_VAL, -HUGE_VAL, -HUGE_VAL};
        nodes_.assign(2 * leaves_, none);
        for (std::size_t i = 0; i < boxes.size(); ++i) nodes_[leaves_ + i] = boxes[i];
        for (std::size_t i = leaves_; i-- > 1;) {
            nodes_[i] = nodes_[2 * i];
            nodes_[i].add(nodes_[2 * i + 1]);
        }
    }

    /// Calls `visit(index)` for each item from `from` on whose box meets `box`, until it gives false.
    template <class Visit>
    void search(const PieceBox& box, std::size_t from, Visit visit) const {
        // Walks the tree in order without a stack: a node's number tells where it stands.
        std::size_t node = 1;
        while (node != 0) {
            const std::size_t lastLeaf = lastLeafOf(node);
            const bool open = lastLeaf >= leaves_ + from && nodes_[node].meets(box);
            if (open && node < leaves_) {
                node *= 2;
                continue;
            }
            if (open && !visit(node - leaves_)) return;
            node = nextOf(node);
        }
    }

private:
    std::size_t lastLeafOf(std::size_t node) const {
        const int below = std::bit_width(leaves_) - std::bit_width(node);
        return ((node + 1) << below) - 1;
    }
    // Up past all right-hand nodes, then to the sister on the right; 0 behind the last.
    static std::size_t nextOf(std::size_t node) {
        node >>= std::countr_one(node);
        return node == 0 ? 0 : node + 1;
    }

    std::size_t leaves_;
    std::vector<PieceBox> nodes_; ///< node 1 is the root, 2n and 2n + 1 are below n
};

} // namespace host
