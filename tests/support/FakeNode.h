// SPDX-License-Identifier: MIT
#pragma once

#include <vexaTransferLib/reader/NodeView.h>
#include <vexaTransferLib/reader/ReadContext.h>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vexaTransferLib::testing_support {

/// A node in a form that a Xerces DOM never has: it may have no child list or a list with missing entries, be
/// an element without a local name, or throw when it is read.
struct FakeNode {
    bool isElement = true;
    std::optional<std::u16string> localName;
    std::optional<std::u16string> namespaceUri;
    std::map<std::u16string, std::u16string> attributes;
    std::optional<std::u16string> text; ///< of the first child
    bool hasChildList = true;
    std::vector<std::shared_ptr<FakeNode>> children; ///< a null pointer is a missing entry
    std::function<void()> whenTextIsRead;            ///< called before the text is handed out

    reader::NodeView View() const;
};

using FakeNodePtr = std::shared_ptr<FakeNode>;

FakeNodePtr Gpx11Node(const char16_t* localName, std::vector<FakeNodePtr> children = {});
FakeNodePtr Gpx11Text(const char16_t* localName, const char16_t* text);
FakeNodePtr GeocacheNode(const char16_t* localName, std::vector<FakeNodePtr> children = {});
FakeNodePtr GeocacheText(const char16_t* localName, const char16_t* text);
/// A point with `lat` and `lon` of 1 and 2.
FakeNodePtr Gpx11Point(const char16_t* localName, std::vector<FakeNodePtr> children = {});

/// A copy of the node without its child list.
FakeNodePtr WithoutChildList(const FakeNode& node);
/// A copy of the node that throws when its text is read.
template <class Thrown>
FakeNodePtr Throwing(const FakeNode& node, Thrown thrown) {
    auto copy = std::make_shared<FakeNode>(node);
    copy->whenTextIsRead = [thrown] { throw thrown; };
    return copy;
}

/// A reading context that marks the geocache texts that it cleans: "<text>".
class MarkingContext : public reader::ReadContext {
public:
    void CleanText(icu::UnicodeString& text) override { text = u"<" + text + u">"; }
};

/// A context for a test that does not check the cleaning.
reader::ReadContext& AnyContext();

} // namespace vexaTransferLib::testing_support
