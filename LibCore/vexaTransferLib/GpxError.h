// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// What a host can learn of a failed reading or writing without taking its message apart.

#include <common/Export.h>
#include <common/dbc.h>

#include <cstdint>
#include <exception>
#include <memory>
#include <string>

namespace vexaTransferLib {

/// What has ended a reading.
enum class GpxReadErrorKind : std::uint32_t {
    kNotOpened = 1,     ///< the file, or the address, cannot be opened, or nothing can be read of it
    kIllFormed = 2,     ///< it is not well-formed XML, or not valid by its own document type declaration
    kUntrusted = 3,     ///< GpxParser::SetUntrusted refuses it: a document type, an encoding, an address
    kOverLimit = 4,     ///< it exceeds one of the limits of GpxParser::SetUntrusted
    kCancelled = 5,     ///< the observer has cancelled the reading
    kNotGpx = 6,        ///< the root element is no `gpx`
    kInvalidContent = 7 ///< no usable version, or a waypoint without a usable position
};

/// What is known of a failed reading.
struct GpxReadErrorDetails {
    /// The path or name that the reading operation was given, in UTF-8. Of a path in bytes (GpxParser::ParseFile), what
    /// is not UTF-8 is U+FFFD.
    std::string file;
    /// \{
    /// Where the file is wrong, from 1; 0 when it is not known. Of kIllFormed: where the XML parser has found its first
    /// error, which in a trusted file may lie in another file that this one includes. Of kInvalidContent: the end of
    /// the start tag, unless the file needed a DOM (see GpxParser::Parse). All others have no place.
    std::uint64_t line = 0;
    std::uint64_t column = 0;
    /// \}
    GpxReadErrorKind kind = GpxReadErrorKind::kInvalidContent; ///< what has ended the reading
    /// The XML parser's first error, in UTF-8 and, unless Xerces was initialised otherwise, in English. Empty when the
    /// XML parser found nothing wrong.
    std::string parserMessage;
    /// \{
    /// The parts of the error's message before and after the name of the file. When the message does not name the file,
    /// `messageStart` is all of it.
    std::string messageStart{};
    std::string messageEnd{};
    bool namesFile = false; ///< true when the message names the file
    /// \}

    /// The error's message with \p name as the name of the file, for a host that shows files by other names than their
    /// paths.
    std::string MessageFor(const std::string& name) const {
        return namesFile ? messageStart + name + messageEnd : messageStart;
    }
};

/// A GPX file could not be read. The messages are those that GpxParser lists. Copies share the details and never
/// throw.
class VEXATRANSFERLIB_API GpxReadError : public dbc::postcondition_error {
public:
    /// \{
    /// An error with its message; copies have the same.
    GpxReadError(const std::string& message, const GpxReadErrorDetails& details);
    GpxReadError(const GpxReadError&) noexcept = default;
    GpxReadError& operator=(const GpxReadError&) noexcept = default;
    /// \}
    ~GpxReadError() override;

    /// File, place, kind and the XML parser's message.
    const GpxReadErrorDetails& Details() const noexcept { return *details_; }

private:
    std::shared_ptr<const GpxReadErrorDetails> details_;
};

/// A GPX file has a value that the model refuses as it would refuse a caller's argument: a version other than 1.0 and
/// 1.1, or a waypoint's position that is out of range. Otherwise like GpxReadError.
class VEXATRANSFERLIB_API GpxReadValueError : public dbc::precondition_error {
public:
    /// \{
    /// An error with its message; copies have the same.
    GpxReadValueError(const std::string& message, const GpxReadErrorDetails& details);
    GpxReadValueError(const GpxReadValueError&) noexcept = default;
    GpxReadValueError& operator=(const GpxReadValueError&) noexcept = default;
    /// \}
    ~GpxReadValueError() override;

    /// File, place, kind and the XML parser's message.
    const GpxReadErrorDetails& Details() const noexcept { return *details_; }

private:
    std::shared_ptr<const GpxReadErrorDetails> details_;
};

/// The details of a GpxReadError or GpxReadValueError, for a host that catches both in one clause. They belong to
/// \p error; null when it is neither.
VEXATRANSFERLIB_API const GpxReadErrorDetails* FindReadErrorDetails(const std::exception& error) noexcept;

/// What is known of a failed writing.
struct GpxWriteErrorDetails {
    std::string file; ///< the path that the operation was given, in UTF-8; a lone surrogate in it is U+FFFD
    /// The system's number (`errno`) of what has failed, as ENOSPC for a full disk; 0 when the system was not asked,
    /// because no file can have that name.
    int systemError = 0;
};

/// A GPX file could not be created or written (GpxDocument::WriteToFile). Copies share the details and never throw.
class VEXATRANSFERLIB_API GpxWriteError : public dbc::postcondition_error {
public:
    /// \{
    /// An error with its message; copies have the same.
    GpxWriteError(const std::string& message, const GpxWriteErrorDetails& details);
    GpxWriteError(const GpxWriteError&) noexcept = default;
    GpxWriteError& operator=(const GpxWriteError&) noexcept = default;
    /// \}
    ~GpxWriteError() override;

    /// File and error number.
    const GpxWriteErrorDetails& Details() const noexcept { return *details_; }

private:
    std::shared_ptr<const GpxWriteErrorDetails> details_;
};

} // namespace vexaTransferLib
