// SPDX-License-Identifier: MIT

// Compares the heads of files of many programs with their DOM, if a folder of such files is beside the source tree.

#include <vexaTransferLib/GpxHead.h>
#include <vexaTransferLib/GpxTarvikExtParser.h>
#include <vexaTransferLib/text/ValueText.h>

#include "support/GpxDom.h"
#include "support/HeadScan.h"
#include "support/TestFiles.h"

#include <gtest/gtest.h>

#include <xercesc/dom/DOMElement.hpp>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace vexaTransferLib {
namespace {

using namespace testing_support;
using xercesc::DOMElement;
using xercesc::DOMNode;

const std::filesystem::path kCorpus = std::filesystem::path(VEXA_SHARED) / "corpus";

std::string LocalName(const DOMNode& node) {
    return Utf8(icu::UnicodeString(node.getLocalName()));
}

bool IsGpx(const DOMNode& node) {
    const XMLCh* const uri = node.getNamespaceURI();
    return uri == nullptr || Utf8(icu::UnicodeString(uri)).find("://www.topografix.com/GPX/1/") < 6;
}

const DOMNode* FirstObject(const DOMNode* root) {
    for (const DOMNode* node = root; node != nullptr; node = NextInDocument(node)) {
        if (node->getNodeType() != DOMNode::ELEMENT_NODE || !IsGpx(*node))
            continue;
        const std::string name = LocalName(*node);
        if (name == "wpt" || name == "rte" || name == "trk")
            return node;
    }
    return nullptr;
}

/// What a host would read of the head if it had the whole tree.
class HeadOfTree {
public:
    explicit HeadOfTree(const DomTree& tree)
        : root_(tree.Root()), firstObject_(FirstObject(tree.Root())), metadata_(All({root_}, "metadata")),
          places_(metadata_) {
        places_.insert(places_.begin(), root_);
    }

    GpxHead Read() const {
        GpxHead head;
        head.rootName = root_->getLocalName();
        if (LocalName(*root_) != "gpx") {
            head.end = GpxHead::End::kNotGpx;
            return head;
        }
        head.end = firstObject_ != nullptr ? GpxHead::End::kObject : GpxHead::End::kEndOfFile;
        head.version = Attribute(root_, u"version");
        head.creator = Attribute(root_, u"creator");
        head.name = LastText(places_, "name");
        head.description = LastText(places_, "desc");
        head.hasMetadata = !metadata_.empty();
        ReadTime(head);
        ReadBounds(head);
        ReadAuthor(head);
        return head;
    }

private:
    using Nodes = std::vector<const DOMElement*>;

    /// The child elements with this name before the first object, of all these parents, in the order of the file.
    Nodes All(const Nodes& parents, const std::string& name) const {
        Nodes found;
        for (const DOMElement* const parent : parents) {
            for (const DOMElement* child = parent->getFirstElementChild(); child != nullptr;
                 child = child->getNextElementSibling()) {
                if (IsGpx(*child) && LocalName(*child) == name && IsBeforeObjects(*child))
                    found.push_back(child);
            }
        }
        std::sort(found.begin(), found.end(),
                  [](const DOMElement* left, const DOMElement* right) { return Precedes(*left, *right); });
        return found;
    }

    static bool Precedes(const DOMNode& left, const DOMNode& right) {
        return (left.compareDocumentPosition(&right) & DOMNode::DOCUMENT_POSITION_FOLLOWING) != 0;
    }
    bool IsBeforeObjects(const DOMNode& node) const {
        return firstObject_ == nullptr || Precedes(node, *firstObject_);
    }

    static std::optional<icu::UnicodeString> Attribute(const DOMElement* element, const char16_t* name) {
        if (!element->hasAttribute(name))
            return std::nullopt;
        return icu::UnicodeString(element->getAttribute(name));
    }

    std::optional<icu::UnicodeString> LastText(const Nodes& parents, const std::string& name) const {
        const Nodes nodes = All(parents, name);
        return nodes.empty() ? std::nullopt
                             : std::optional<icu::UnicodeString>(nodes.back()->getTextContent());
    }

    void ReadTime(GpxHead& head) const {
        for (const DOMElement* const node : All(places_, "time")) {
            if (const auto time = text::ReadSchemaTime(Utf8(icu::UnicodeString(node->getTextContent()))))
                head.time = time;
        }
    }

    void ReadBounds(GpxHead& head) const {
        const auto number = [](const DOMElement* node, const char16_t* name) {
            return text::ReadSchemaNumber(Utf8(icu::UnicodeString(node->getAttribute(name))));
        };
        for (const DOMElement* const node : All(places_, "bounds")) {
            const auto south = number(node, u"minlat");
            const auto west = number(node, u"minlon");
            const auto north = number(node, u"maxlat");
            const auto east = number(node, u"maxlon");
            if (south && west && north && east)
                head.bounds = {*south, *west, *north, *east};
        }
    }

    void ReadAuthor(GpxHead& head) const {
        const auto take = [&](const std::optional<icu::UnicodeString>& text,
                              icu::UnicodeString GpxHead::Author::*part) {
            if (!text)
                return;
            if (!head.author)
                head.author.emplace();
            (*head.author).*part = *text;
        };
        const Nodes authors = All(metadata_, "author");
        take(LastText({root_}, "author"), &GpxHead::Author::name);
        take(LastText({root_}, "email"), &GpxHead::Author::email);
        take(LastText(authors, "name"), &GpxHead::Author::name);
        for (const DOMElement* const node : All(authors, "email"))
            take(*Attribute(node, u"id") + u'@' + *Attribute(node, u"domain"), &GpxHead::Author::email);
    }

    const DOMElement* root_;
    const DOMNode* firstObject_;
    Nodes metadata_;
    Nodes places_;
};

struct Totals {
    std::size_t files = 0;
    std::size_t wellFormed = 0;
    std::size_t withName = 0;
    std::size_t withTime = 0;
    std::size_t withBounds = 0;
    std::size_t withAuthor = 0;
};

Totals CompareFilesIn(const std::filesystem::path& folder) {
    Totals totals;
    GpxTarvikExtParser scanner;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        const std::string path = entry.path().string();
        ++totals.files;
        ScanFile(scanner, path);
        const GpxHead& head = scanner.GetHead();
        std::optional<DomTree> tree;
        try {
            tree.emplace(ReadBytes(path));
        } catch (const std::runtime_error&) {
            EXPECT_TRUE(head.end == GpxHead::End::kObject || head.error) << path;
            continue;
        }
        ++totals.wellFormed;
        EXPECT_EQ(Shown(head), Shown(HeadOfTree(*tree).Read())) << path;
        totals.withName += head.name ? 1 : 0;
        totals.withTime += head.time ? 1 : 0;
        totals.withBounds += head.bounds ? 1 : 0;
        totals.withAuthor += head.author ? 1 : 0;
    }
    return totals;
}

TEST(GpxHeadCorpusTest, EveryHeadIsThatOfTheWholeTree) {
    if (!std::filesystem::is_directory(kCorpus / "gpx"))
        GTEST_SKIP() << "there is no corpus of GPX files beside the source tree";
    const Totals good = CompareFilesIn(kCorpus / "gpx");
    EXPECT_EQ(good.wellFormed, good.files);
    for (const std::size_t count : {good.withName, good.withTime, good.withBounds, good.withAuthor})
        EXPECT_GT(count, good.files / 4);
    const Totals bad = CompareFilesIn(kCorpus / "gpx-malformed");
    EXPECT_GT(bad.wellFormed, 0U);
    EXPECT_LT(bad.wellFormed, bad.files);
}

} // namespace
} // namespace vexaTransferLib
