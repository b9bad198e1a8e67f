// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace vexaTransferLib::testing_support {

/// A GPX file without an XML declaration.
/// \param attributes of the root, besides its version and its namespace
std::string GpxFileText(const std::string& version, const std::string& attributes,
                        const std::string& children);

/// What an observer is told of the file, a line each, as RecordingObserver has them. The file is read by the lexer of
/// plain files, from the XML parser's events and from the DOM, which must report the same, and its path gives the
/// document no name.
std::string ReportsOf(const std::string& bytes);

/// Of a GPX 1.1 file with these children of the root.
std::string ReportsOfChildren(const std::string& children);

} // namespace vexaTransferLib::testing_support
