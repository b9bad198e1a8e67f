// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/reader/NodeView.h>
#include <vexaTransferLib/text/ElementNames.h>
#include <vexaTransferLib/text/GpxNames.h>

#include <initializer_list>

namespace vexaTransferLib::reader {

// The readers compare names and namespaces with constants. Where those of a file are the constants themselves, equal
// pointers need no comparison of the texts.

/// For a namespace that the readers know, returns their constant. For any other, returns the namespace itself.
inline const char16_t* KnownNamespace(const char16_t* uri) {
    for (const char16_t* known : {text::kGpx11Namespace, text::kGpx10Namespace, text::kTarvikNamespace,
                                  text::kGroundspeak10Namespace, text::kGroundspeak101Namespace})
        if (Equals(uri, known))
            return known;
    return uri;
}

/// The same for the local name of an element or an attribute that files have in great numbers.
inline const char16_t* KnownName(const char16_t* name) {
    for (const char16_t* known : std::initializer_list<const char16_t*>{
             gpx::kTrkpt, gpx::kRtept, gpx::kWpt, gpx::kLat, gpx::kLon, gpx::kEle, gpx::kTime, gpx::kName,
             gpx::kCmt, gpx::kDesc, gpx::kSym, gpx::kType})
        if (Equals(name, known))
            return known;
    return name;
}

} // namespace vexaTransferLib::reader
