// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <unordered_set>
#include <vector>

namespace wib {

// The light table's pins, kept by the id of the frame each was put on, so
// that they stay on the same pictures when frames move. The view keeps them
// as positions; the stack turns them into ids before it changes the order
// and back after. A pinned frame that leaves the stack keeps its pin here
// while it may come back (an undo or redo of a timeline edit); one that can
// never come back loses it.
class FramePins {
  public:
    // The positions in `after` of the frames pinned at `pinned` in `before`,
    // and of the frames pinned earlier that have come back, in order.
    // Positions outside `before` name no frame and are dropped. Pins of
    // frames missing from `after` are kept while `mayReturn` says so.
    std::vector<int> follow(const std::vector<int>& pinned,
                            const std::vector<std::uint32_t>& before,
                            const std::vector<std::uint32_t>& after,
                            const std::function<bool(std::uint32_t)>& mayReturn);

  private:
    std::unordered_set<std::uint32_t> away_;  // pinned frames not in the stack
};

}  // namespace wib
