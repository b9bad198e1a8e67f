// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxPoint.h>
#include <vexaTransferLib/GpxUrl.h>
#include <vexaTransferLib/reader/ElementTable.h>
#include <vexaTransferLib/reader/LinkReader.h>
#include <vexaTransferLib/reader/NodeView.h>
#include <vexaTransferLib/reader/ReadContext.h>
#include <vexaTransferLib/reader/ValueReaders.h>
#include <vexaTransferLib/text/ElementNames.h>
#include <vexaTransferLib/text/GpxNames.h>

#include <unicode/unistr.h>

#include <type_traits>
#include <utility>

namespace vexaTransferLib::reader {

// Functions that the tables of several readers use.

/// Gives the value of an element to `target`, which is a member or a setter of the owner.
template <auto target, class Value, class Owner>
bool ReadInto(const Element<Owner>& element, bool (*read)(ReadContext&, const NodeView&, Value&)) {
    Value value{};
    if (!read(element.context, element.node, value))
        return false;
    if constexpr (std::is_member_object_pointer_v<decltype(target)>)
        element.owner.*target = std::move(value);
    else
        (element.owner.*target)(value);
    return true;
}

template <auto target, class Owner>
bool ReadTextInto(const Element<Owner>& element) {
    return ReadInto<target, icu::UnicodeString>(element, ReadText);
}

template <auto target, class Owner>
bool ReadDoubleInto(const Element<Owner>& element) {
    return ReadInto<target, double>(element, ReadDouble);
}

template <auto target, class Owner>
bool ReadTimeInto(const Element<Owner>& element) {
    return ReadInto<target, double>(element, ReadTime);
}

template <auto target, class Owner>
bool ReadFixInto(const Element<Owner>& element) {
    return ReadInto<target, GpxFix>(element, ReadFix);
}

// The functions below read elements that both points and tracks have.

/// The first description is kept.
template <class Owner>
bool ReadDescription(const Element<Owner>& element) {
    icu::UnicodeString text;
    if (element.owner.GetDescription(text)) {
        element.sources.ReportIgnored(gpx::kDesc, element.node);
        return false;
    }
    return ReadTextInto<&Owner::SetDescription>(element);
}

/// A later `link` replaces an earlier one.
template <class Owner>
bool ReadLinkElement(const Element<Owner>& element) {
    GpxUrl link(text::kVendorHomePage);
    ReadLink(element.context, element.node, link);
    element.owner.SetURL(link);
    return true;
}

template <class Owner>
bool ReadUrl(const Element<Owner>& element) {
    icu::UnicodeString text;
    if (!ReadText(element.context, element.node, text))
        return false;
    element.owner.SetURL(GpxUrl(text));
    return true;
}

/// A `urlname` is lost when it comes before its `url`.
template <class Owner>
bool ReadUrlName(const Element<Owner>& element) {
    icu::UnicodeString text;
    GpxUrl link(text::kVendorHomePage);
    if (!element.owner.GetURL(link)) {
        element.context.reporter.Skip(element.node, kGpxIncomplete, "No url comes before it.", true);
        return false;
    }
    if (!ReadText(element.context, element.node, text))
        return false;
    link.SetUrlText(text);
    element.owner.SetURL(link);
    return true;
}

} // namespace vexaTransferLib::reader
