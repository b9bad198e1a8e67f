// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/ChildReader.h>

namespace vexaTransferLib::reader {

namespace {

void ReadChild(ReadContext& context, ChildReader& reader, const NodeView& child) {
    text::Ensure(!child.IsNull(), reader.MissingChildPlace(), reader.MissingChildMessage());
    switch (reader.WayOf(child)) {
    case ChildReader::Way::kPassOver:
        break;
    case ChildReader::Way::kWhole:
        reader.ReadWhole(child);
        break;
    case ChildReader::Way::kChildByChild:
        ReadChildren(context, *reader.Enter(child), child);
        break;
    }
}

} // namespace

std::unique_ptr<ChildReader> ChildReader::Enter(const NodeView&) {
    return nullptr;
}

void ReadChildren(ReadContext& context, ChildReader& reader, const NodeView& node) {
    ChildWalk children(node);
    for (NodeView child; children.Next(child);) {
        context.Work();
        Guarded(
            reader, [&] { ReadChild(context, reader, child); },
            [&](const char* message) {
                context.receipt.PassOver(child.IsNull() ? node : child, kGpxRefused, message, true);
            });
    }
    reader.Finish();
}

} // namespace vexaTransferLib::reader
