// SPDX-License-Identifier: MIT
#pragma once

#include <vexaTransferLib/reader/NodeView.h>

namespace vexaTransferLib::testing_support {

/// An element that counts how often its text was built. Its texts need not be zero-terminated.
class OneNode final : public reader::OpaqueNodeSource {
public:
    reader::NodeView View() const { return {*this, this}; }

    bool IsElement(const void*) const override { return true; }
    const char16_t* LocalName(const void*) const override { return u"x"; }
    const char16_t* NamespaceUri(const void*) const override { return namespaceUri; }
    const char16_t* Attribute(const void*, const char16_t*) const override { return nullptr; }
    const char16_t* FirstChildText(const void*) const override { return firstChildText; }
    bool TextContent(const void*, icu::UnicodeString& out) const override {
        ++built;
        out = content;
        return true;
    }
    bool HasChildList(const void*) const override { return true; }
    bool NextChild(const void*, const void*&, const void*&) const override { return false; }
    std::string Path(const void*) const override { return path; }

    const char16_t* namespaceUri = nullptr;
    const char16_t* firstChildText = nullptr;
    icu::UnicodeString content;
    std::string path = "x";
    mutable int built = 0;
};

} // namespace vexaTransferLib::testing_support
