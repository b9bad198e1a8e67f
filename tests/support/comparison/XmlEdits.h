// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vexaTransferLib::testing_support {

class XmlDocument;

/// Edits of a text that libxml2 has parsed, made without the library whose edits they are compared with.
class XmlEdits {
public:
    /// The numbers of elements among the elements of their parents, from the root's child on; empty for the root.
    using Path = std::vector<std::size_t>;

    /// Throws as XmlDocument does.
    explicit XmlEdits(std::string_view text);
    ~XmlEdits();

    /// \{
    /// Edits of the first child with a local name in its parent's namespace. One that is missing is inserted behind the
    /// last sibling of the namespace whose name does not come later in `order`.
    void SetChild(const Path& parent, const char* name, const char* text,
                  const std::vector<std::string_view>& order);
    void MakeChild(const Path& parent, const char* name, const std::vector<std::string_view>& order);
    /// \}
    /// Removes all children with a local name in the parent's namespace.
    void RemoveChildren(const Path& parent, const char* name);

    /// The number of the root's first child with a local name in its namespace.
    std::size_t NumberOf(const char* name) const;

    void SetText(const Path& element, const char* text);
    void SetAttribute(const Path& element, const char* name, const char* value);
    void RemoveAttribute(const Path& element, const char* name);
    /// In no namespace.
    void AppendChild(const Path& parent, const char* name, const char* text);
    void Remove(const Path& element);

    /// Canonical XML without comments and without text that is only blank, which are gone from the document then.
    std::string TakeCanonical();

private:
    std::unique_ptr<XmlDocument> document_;
};

} // namespace vexaTransferLib::testing_support
