// SPDX-License-Identifier: MIT
#include "support/GpxText.h"

namespace vexaTransferLib::testing_support {

std::string Gpx(const std::string& version, const std::string& defaultNamespace,
                const std::string& children) {
    std::string text = "<gpx version=\"" + version + "\" creator=\"test\"";
    if (!defaultNamespace.empty())
        text += " xmlns=\"" + defaultNamespace + "\"";
    text += " xmlns:gpx10=\"" + std::string(kGpx10Uri) + "\" xmlns:gpx11=\"" + kGpx11Uri +
            "\" xmlns:tarvik=\"" + kVendorUri + "\" xmlns:groundspeak=\"" + kGeocache10Uri +
            "\" xmlns:groundspeak101=\"" + kGeocache101Uri + "\" xmlns:other=\"urn:other\">";
    return text + children + "</gpx>";
}

std::string Gpx10(const std::string& children) {
    return Gpx("1.0", kGpx10Uri, children);
}
std::string Gpx11(const std::string& children) {
    return Gpx("1.1", kGpx11Uri, children);
}

std::string Repeat(const std::string& text, std::size_t count) {
    std::string repeated;
    repeated.reserve(text.size() * count);
    for (std::size_t i = 0; i < count; ++i)
        repeated += text;
    return repeated;
}

std::string Wide(const std::string& text, std::size_t width, bool isBigEndian) {
    std::string wide;
    for (const char character : text) {
        std::string unit(width, '\0');
        unit[isBigEndian ? width - 1 : 0] = character;
        wide += unit;
    }
    return wide;
}

} // namespace vexaTransferLib::testing_support
