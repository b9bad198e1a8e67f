// SPDX-License-Identifier: MIT
#include <vexaTransferLib/text/Namespaces.h>

#include <vexaTransferLib/text/GpxNames.h>

namespace vexaTransferLib::text {

namespace {

// What namespaces that begin with "http:" begin with when it is "https:".
constexpr std::string_view kPlain = "http:";
constexpr std::string_view kSecure = "https:";

bool StartsWithAddress(std::string_view uri, std::string_view address) {
    if (uri.starts_with(kSecure))
        uri.remove_prefix(kSecure.size());
    else if (uri.starts_with(kPlain))
        uri.remove_prefix(kPlain.size());
    return uri.starts_with(address.substr(kPlain.size()));
}

} // namespace

bool IsGpxNamespace(std::string_view uri) {
    return uri.empty() || uri == kGpx11Uri || StartsWithAddress(uri, "http://www.topografix.com/GPX/1/");
}

bool IsGroundspeakNamespace(std::string_view uri) {
    return StartsWithAddress(uri, "http://www.groundspeak.com/cache/");
}

bool IsTarvikNamespace(std::string_view uri) {
    return uri == kTarvikUri || IsGpxNamespace(uri);
}

} // namespace vexaTransferLib::text
