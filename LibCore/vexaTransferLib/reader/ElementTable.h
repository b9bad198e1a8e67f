// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxVersion.h>
#include <vexaTransferLib/reader/Children.h>
#include <vexaTransferLib/reader/FieldSources.h>
#include <vexaTransferLib/reader/NodeView.h>
#include <vexaTransferLib/reader/ReadContext.h>
#include <vexaTransferLib/reader/UnreadAttributes.h>
#include <vexaTransferLib/reader/ValueReaders.h>
#include <vexaTransferLib/text/GpxNames.h>

#include <span>

namespace vexaTransferLib::reader {

// A reader has a table of the elements that it keeps. The functions in a table only convert values.
// Everything that is the same for all elements is done here: it checks namespaces and versions, reports
// elements that are in no table, and records which element gave a field its value.

/// An element and the objects that are needed to read it into `owner`.
template <class Owner>
struct Element {
    ReadContext& context;
    /// Null for the tables whose elements do not depend on the version of the file.
    const GpxVersion* version;
    const NodeView& node;
    Owner& owner;
    FieldSources& sources;
};

/// The versions of GPX that have an element.
enum class Versions { kAll, kOnly10, kOnly11 };

/// Who reports the attributes of an element that nothing reads.
enum class Attributes {
    kNone,    ///< the dispatcher: none of them is read
    kOfReader ///< the element's reader, which reads some
};

/// The entry of one element in a table.
template <class Owner>
struct ElementReader {
    const char16_t* name;
    /// The field that has the element's value; null when there is no such field, or more than one.
    const char16_t* field;
    /// True when the owner has the element's value now. Null for an element whose children are read one by one.
    bool (*read)(const Element<Owner>&);
    Versions versions = Versions::kAll;
    Attributes attributes = Attributes::kNone;
};

/// The namespace of the elements in a table.
enum class Namespace { kGpx, kGroundspeak, kTarvik, kAny };

template <class Owner>
struct ElementTable {
    Namespace space;
    /// The most frequent first.
    std::span<const ElementReader<Owner>> readers;

    /// The entry of a local name, whatever its namespace; null when there is none.
    const ElementReader<Owner>* Find(const char16_t* name) const {
        for (const ElementReader<Owner>& reader : readers)
            if (Equals(name, reader.name))
                return &reader;
        return nullptr;
    }
};

inline bool Includes(Versions versions, const GpxVersion* version) {
    return versions == Versions::kAll || (versions == Versions::kOnly10) == version->IsGpx10();
}

inline bool IsIn(Namespace space, const GpxVersion* version, const NodeView& node) {
    switch (space) {
    case Namespace::kGpx:
        return IsStandard(*version, node);
    case Namespace::kGroundspeak:
        return IsGroundspeak(node);
    case Namespace::kTarvik:
        return Equals(node.NamespaceUri(), text::kTarvikNamespace);
    case Namespace::kAny:
        break;
    }
    return true;
}

/// Reports an element that is not in the namespace of the table.
template <class Owner>
void SkipForeign(const ElementTable<Owner>& table, ReadContext& context, const GpxVersion* version,
                 const NodeView& node) {
    if (!context.reporter.IsWanted())
        return;
    if (table.space == Namespace::kGpx)
        SkipForeignToGpx(context.reporter, *version, node);
    else if (table.space == Namespace::kGroundspeak)
        context.reporter.SkipForeign(node, "that of geocaches");
    else
        context.reporter.SkipUnknown(node);
}

/// Calls the reader of the element. Reports the attributes of an element that is not skipped.
template <class Owner>
bool ReadByEntry(const ElementReader<Owner>& reader, const Element<Owner>& element) {
    SkipReporter& reporter = element.context.reporter;
    if (!reporter.IsWanted())
        return reader.read(element);
    reporter.StartElement();
    const bool isRead = reader.read(element);
    if (reader.attributes == Attributes::kNone && (isRead || !reporter.HasSkipped(element.node)))
        ReportUnreadAttributes(reporter, element.node);
    return isRead;
}

/// Reads an element that is in the namespace of the table, or reports that it is skipped. True when the owner has its
/// value now.
template <class Owner>
bool ReadOwnElement(const ElementTable<Owner>& table, const Element<Owner>& element) {
    const ElementReader<Owner>* const reader = table.Find(element.node.LocalName());
    if (reader == nullptr) {
        element.context.reporter.SkipUnknown(element.node);
        return false;
    }
    if (!Includes(reader->versions, element.version)) {
        element.context.reporter.SkipOtherVersion(element.node, *element.version);
        return false;
    }
    const bool isRead = ReadByEntry(*reader, element);
    if (isRead && reader->field != nullptr)
        element.sources.Set(reader->field, element.node);
    return isRead;
}

/// The same for an element in any namespace.
template <class Owner>
bool ReadElement(const ElementTable<Owner>& table, const Element<Owner>& element) {
    if (IsIn(table.space, element.version, element.node))
        return ReadOwnElement(table, element);
    SkipForeign(table, element.context, element.version, element.node);
    return false;
}

/// Reads all children of a node by a table that does not depend on the version. True when the owner has a value from
/// one of them.
template <class Owner>
bool ReadElements(const ElementTable<Owner>& table, ReadContext& context, const NodeView& parent,
                  Owner& owner) {
    bool isAnyRead = false;
    FieldSources sources(context.reporter, FieldSources::Lifetime::kLong);
    ForEachNamedChild(context, parent, [&](const NodeView& child) {
        if (ReadElement(table, {context, nullptr, child, owner, sources}))
            isAnyRead = true;
    });
    return isAnyRead;
}

/// When the reader of a long element reports a child that its table does not have: at the start of the child, or after
/// its end.
enum class WhenUnknown { kAtStart, kAtEnd };

/// Decides, for the reader of a long element, how a child is read. Reports the child if it is skipped.
template <class Owner>
ChildReader::Visit ClassifyElement(const ElementTable<Owner>& table, ReadContext& context,
                                   const GpxVersion& version, const NodeView& child,
                                   WhenUnknown whenUnknown) {
    using Visit = ChildReader::Visit;
    const char16_t* const name = child.LocalName();
    if (name == nullptr)
        return Visit::kSkip;
    if (!IsIn(table.space, &version, child)) {
        SkipForeign(table, context, &version, child);
        return Visit::kSkip;
    }
    const ElementReader<Owner>* const reader = table.Find(name);
    if (reader != nullptr)
        return reader->read != nullptr ? Visit::kAsTree : Visit::kDescend;
    if (whenUnknown == WhenUnknown::kAtEnd)
        return Visit::kAsTree;
    context.reporter.SkipUnknown(child);
    return Visit::kSkip;
}

} // namespace vexaTransferLib::reader
