// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxElement.h>
#include <vexaTransferLib/GpxLink.h>
#include <vexaTransferLib/text/ElementNames.h>
#include <vexaTransferLib/text/Namespaces.h>

#include <unicode/unistr.h>

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace vexaTransferLib {

// The values of elements, for the classes that show them by name. Each call reads the source: it costs at most the
// content of the element. The value of nothing is empty, and so is one that is not what was asked for.

/// The first child with this local name in a namespace that passes the test; a view of nothing when there is none.
GpxElement FindChildIn(bool (*isWanted)(std::string_view uri), const GpxElement& parent,
                       const text::ElementName& name);

inline GpxElement FindGpxChild(const GpxElement& parent, const text::ElementName& name) {
    return FindChildIn(text::IsGpxNamespace, parent, name);
}

inline GpxElement FindGroundspeakChild(const GpxElement& parent, const text::ElementName& name) {
    return FindChildIn(text::IsGroundspeakNamespace, parent, name);
}

inline GpxElement FindTarvikChild(const GpxElement& parent, const text::ElementName& name) {
    return FindChildIn(text::IsTarvikNamespace, parent, name);
}

inline bool IsGpxElement(const GpxElement& element, const text::ElementName& name) {
    return element.GetName() == name.Local() && text::IsGpxNamespace(element.GetNamespace());
}

inline bool IsGroundspeakElement(const GpxElement& element, const text::ElementName& name) {
    return element.GetName() == name.Local() && text::IsGroundspeakNamespace(element.GetNamespace());
}

/// Calls \p visit with each element of another format in the object, in their order: with the children of
/// `extensions`, as in GPX 1.1, and with those in no namespace of GPX, as in 1.0. Stops when it returns false.
template <class Visitor>
void ForEachForeign(const GpxElement& object, Visitor visit) {
    for (const GpxElement& child : object.GetChildren()) {
        if (!text::IsGpxNamespace(child.GetNamespace())) {
            if (!visit(child))
                return;
        } else if (child.GetName() == gpx::kExtensions.Local()) {
            for (const GpxElement& inner : child.GetChildren())
                if (!visit(inner))
                    return;
        }
    }
}

/// The last of the vendor's elements with this name in the extensions of the object, which is the one that counts.
GpxElement FindVendorElement(const GpxElement& object, const text::ElementName& name);

/// Empty for a view of nothing only.
std::optional<icu::UnicodeString> TextOf(const GpxElement& element);
/// A whole number that is not negative.
std::optional<std::uint64_t> UnsignedOf(const GpxElement& element);
/// \{
/// The number of one of the vendor's elements.
std::optional<std::int32_t> VendorIntegerOf(const GpxElement& element);
std::optional<double> VendorNumberOf(const GpxElement& element);
/// \}

/// \{
/// The value of an attribute without a namespace.
std::optional<icu::UnicodeString> TextOf(const GpxElement& element, const text::ElementName& attribute);
std::optional<double> NumberOf(const GpxElement& element, const text::ElementName& attribute);
std::optional<std::int64_t> IntegerOf(const GpxElement& element, const text::ElementName& attribute);
std::optional<bool> BooleanOf(const GpxElement& element, const text::ElementName& attribute);
std::optional<double> TimeOf(const GpxElement& element, const text::ElementName& attribute);
/// \}

/// A `link` of GPX 1.1.
GpxLink LinkOf(const GpxElement& link);
/// All links of an object, in their order: each `link`, and each `url` with the `urlname` that belongs to it.
std::vector<GpxLink> LinksOf(const GpxElement& object);

} // namespace vexaTransferLib
