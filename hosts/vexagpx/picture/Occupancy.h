// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/picture/Drawing.h>

#include <cstddef>
#include <vector>

namespace vexagpx {

/// Which parts of a box are taken, in small cells. Taking and asking cost as much as the area has cells, however many
/// things there are.
class Occupancy {
public:
    explicit Occupancy(const Box& box);

    /// False also for what is not wholly inside the box.
    bool IsFree(const Box& area) const;
    void Take(const Box& area);
    /// Takes the area if it is free.
    bool TakeIfFree(const Box& area);

private:
    struct Cells {
        std::size_t left, top, right, bottom;
    };
    Cells CellsOf(const Box& area) const;

    Box box_;
    std::size_t columns_;
    std::size_t rows_;
    std::vector<bool> taken_;
};

} // namespace vexagpx
