// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/process/Output.h>
#include <vexagpx/report/IndexEntry.h>
#include <vexagpx/terminal/Table.h>

#include <cstddef>

namespace vexagpx {

/// An index for a person: a row with numbers for each document, and below it kinds, days and bounds, or the reason why
/// it could not be read.
class IndexTable {
public:
    void Add(const IndexEntry& entry);
    void Write(Output& out) { table_.Write(out); }

private:
    std::size_t rows_ = 0;
    Table table_{{{u"#", Column::Kind::kNumber},
                  {u"File", Column::Kind::kFlexible},
                  {u"Points", Column::Kind::kNumber},
                  {u"Waypoints", Column::Kind::kNumber},
                  {u"Caches", Column::Kind::kNumber},
                  {u"Routes", Column::Kind::kNumber},
                  {u"Tracks", Column::Kind::kNumber}}};
};

} // namespace vexagpx
