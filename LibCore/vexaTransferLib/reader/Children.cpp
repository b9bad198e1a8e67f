// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/Children.h>

namespace vexaTransferLib::reader {

namespace {

void ReadChild(ReadContext& context, ChildReader& reader, const NodeView& child) {
    text::Ensure(!child.IsNull(), reader.MissingChildSite(), reader.MissingChildMessage());
    switch (reader.Classify(child)) {
    case ChildReader::Visit::kSkip:
        break;
    case ChildReader::Visit::kAsTree:
        reader.ReadTree(child);
        break;
    case ChildReader::Visit::kDescend:
        ReadChildren(context, *reader.Descend(child), child);
        break;
    }
}

} // namespace

std::unique_ptr<ChildReader> ChildReader::Descend(const NodeView&) {
    return nullptr;
}

void ReadChildren(ReadContext& context, ChildReader& reader, const NodeView& node) {
    ChildWalk children(node);
    bool hasText = false;
    for (NodeView child; children.Next(child);) {
        context.Work();
        context.reporter.ReportTextBeside(node, child, hasText);
        IsolateFailure(context, child.IsNull() ? node : child, reader.IsolatesFailures(),
                       [&] { ReadChild(context, reader, child); });
    }
    reader.Finish();
}

} // namespace vexaTransferLib::reader
