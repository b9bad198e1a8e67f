// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxUrl.h>
#include <vexaTransferLib/GpxVersion.h>
#include <vexaTransferLib/reader/LinkReader.h>
#include <vexaTransferLib/reader/NodeView.h>
#include <vexaTransferLib/reader/ValueReaders.h>
#include <vexaTransferLib/text/GpxNames.h>

#include <unicode/unistr.h>

namespace vexaTransferLib::reader {

// The elements that points and tracks have in common: description and link. `Owner` is GpxPoint or GpxTrack.

/// A comment becomes the description and wins over any, whatever their order.
template <class Owner>
void ReadCommentAsDescription(const NodeView& node, Owner& owner) {
    icu::UnicodeString text;
    if (ReadText(node, text))
        owner.SetDescription(text);
}

/// The first description stays.
template <class Owner>
void ReadDescription(const NodeView& node, Owner& owner) {
    icu::UnicodeString text;
    if (!owner.GetDescription(text) && ReadText(node, text))
        owner.SetDescription(text);
}

/// GPX 1.1 `link`: a later one replaces an earlier one.
template <class Owner>
void ReadLinkElement(const GpxVersion& version, const NodeView& node, Owner& owner) {
    if (version.IsGpx10())
        return;
    GpxUrl link(text::kVendorHomePage);
    ReadLink(node, link);
    owner.SetURL(link);
}

/// GPX 1.0 `url`.
template <class Owner>
void ReadUrlElement(const GpxVersion& version, const NodeView& node, Owner& owner) {
    icu::UnicodeString text;
    if (version.IsGpx10() && ReadText(node, text))
        owner.SetURL(GpxUrl(text));
}

/// GPX 1.0 `urlname`: lost when it stands before its `url`.
template <class Owner>
void ReadUrlNameElement(const GpxVersion& version, const NodeView& node, Owner& owner) {
    icu::UnicodeString text;
    GpxUrl link(text::kVendorHomePage);
    if (!version.IsGpx10() || !owner.GetURL(link) || !ReadText(node, text))
        return;
    link.SetUrlText(text);
    owner.SetURL(link);
}

} // namespace vexaTransferLib::reader
