// SPDX-License-Identifier: MIT
#pragma once

#include <xercesc/util/PlatformUtils.hpp>

namespace cli {

/// The XML parser, ready for use in this process.
class XercesPlatform {
public:
    XercesPlatform() { xercesc::XMLPlatformUtils::Initialize(); }
    ~XercesPlatform() { xercesc::XMLPlatformUtils::Terminate(); }
    XercesPlatform(const XercesPlatform&) = delete;
    XercesPlatform& operator=(const XercesPlatform&) = delete;
};

} // namespace cli
