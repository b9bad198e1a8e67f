// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxUrl.h>
#include <vexaTransferLib/GpxVersion.h>
#include <vexaTransferLib/reader/FieldSources.h>
#include <vexaTransferLib/reader/LinkReader.h>
#include <vexaTransferLib/reader/NodeView.h>
#include <vexaTransferLib/reader/ReadContext.h>
#include <vexaTransferLib/reader/ToldValues.h>
#include <vexaTransferLib/text/ElementNames.h>
#include <vexaTransferLib/text/GpxNames.h>

#include <unicode/unistr.h>

namespace vexaTransferLib::reader {

// The elements that points and tracks have in common: description and link. `Owner` is GpxPoint or GpxTrack. Each
// returns whether the owner has its value now.

/// A comment becomes the description and wins over any, whatever their order.
template <class Owner>
bool ReadCommentAsDescription(ReadContext& context, const NodeView& node, Owner& owner) {
    icu::UnicodeString text;
    if (!ReadText(context, node, text))
        return false;
    owner.SetDescription(text);
    return true;
}

/// The first description stays.
template <class Owner>
bool ReadDescription(ReadContext& context, FieldSources& sources, const NodeView& node, Owner& owner) {
    icu::UnicodeString text;
    if (owner.GetDescription(text)) {
        sources.ReportIgnored(gpx::kDesc, node);
        return false;
    }
    if (!ReadText(context, node, text))
        return false;
    owner.SetDescription(text);
    return true;
}

/// GPX 1.1 `link`: a later one replaces an earlier one.
template <class Owner>
bool ReadLinkElement(ReadContext& context, const GpxVersion& version, const NodeView& node, Owner& owner) {
    if (version.IsGpx10()) {
        context.reporter.SkipOtherVersion(node, version);
        return false;
    }
    GpxUrl link(text::kVendorHomePage);
    ReadLink(context, node, link);
    owner.SetURL(link);
    return true;
}

/// GPX 1.0 `url`.
template <class Owner>
bool ReadUrlElement(ReadContext& context, const GpxVersion& version, const NodeView& node, Owner& owner) {
    if (!version.IsGpx10()) {
        context.reporter.SkipOtherVersion(node, version);
        return false;
    }
    icu::UnicodeString text;
    if (!ReadText(context, node, text))
        return false;
    owner.SetURL(GpxUrl(text));
    return true;
}

/// GPX 1.0 `urlname`: lost when it stands before its `url`.
template <class Owner>
bool ReadUrlNameElement(ReadContext& context, const GpxVersion& version, const NodeView& node, Owner& owner) {
    if (!version.IsGpx10()) {
        context.reporter.SkipOtherVersion(node, version);
        return false;
    }
    icu::UnicodeString text;
    GpxUrl link(text::kVendorHomePage);
    if (!owner.GetURL(link)) {
        context.reporter.Skip(node, kGpxIncomplete, "No url stands before it.", true);
        return false;
    }
    if (!ReadText(context, node, text))
        return false;
    link.SetUrlText(text);
    owner.SetURL(link);
    return true;
}

} // namespace vexaTransferLib::reader
