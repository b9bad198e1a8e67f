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

/// Gives a number to a setter.
/// \tparam decimals how many are written
template <auto setter, int decimals, class Owner>
bool ReadDoubleInto(const Element<Owner>& element) {
    Number number;
    if (!ReadDouble(element.context, element.node, number))
        return false;
    (element.owner.*setter)(number.value);
    ReportLostDigits(element.context.reporter, element.node, nullptr, number, number.value, decimals);
    return true;
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

/// A comment becomes the description and replaces one that comes from `desc`, in whatever order they come.
template <class Owner>
bool ReadComment(const Element<Owner>& element) {
    if (!ReadTextInto<&Owner::SetDescription>(element))
        return false;
    element.context.reporter.Report(element.node, kGpxChanged, "The comment is kept as the description.",
                                    false);
    return true;
}

/// A later `link` replaces an earlier one.
template <class Owner>
bool ReadLinkElement(const Element<Owner>& element) {
    GpxUrl link(text::kVendorHomePage);
    ReadLink(element.context, element.node, link);
    element.owner.SetURL(link);
    return true;
}

/// A later `url` replaces an earlier one together with its `urlname`.
template <class Owner>
bool ReadUrl(const Element<Owner>& element) {
    icu::UnicodeString text;
    if (!ReadText(element.context, element.node, text))
        return false;
    element.sources.Clear(gpx::kUrlname);
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
