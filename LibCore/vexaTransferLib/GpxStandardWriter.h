// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Writing by the published schemas, with everything that a completely read document has.

#include <common/Export.h>
#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxVersion.h>

#include <unicode/unistr.h>

#include <functional>
#include <string>
#include <string_view>

namespace vexaTransferLib {

/// Something of a document that the version in which it is written has no place for.
struct VEXATRANSFERLIB_API GpxUnwritten {
    std::string
        object; ///< "document", or which one it is of its kind, from 1: "route 2", "track 1, segment 3, point 17"
    std::string element; ///< the name of the element that is left out, in UTF-8: "copyright", "link"
    std::string message; ///< for a person, in English, UTF-8
};

/// How a GpxStandardWriter writes.
struct VEXATRANSFERLIB_API GpxStandardOptions {
    /// 1.0 or 1.1, each in its own namespace.
    GpxVersion version = GpxVersion::GetLatestVersion();
    /// The program that writes: the `creator` of the file.
    icu::UnicodeString creator = u"vexaTransferLib";
    /// True writes U+FFFD in place of a character that XML cannot hold; false refuses the document.
    bool replacesCharacters = false;
    /// True writes a temporary file beside the target, which then takes its place: whatever happens, the target is
    /// whole, the old one or the new one. False writes into the target, as devices and pipes need it. A process that is
    /// killed (SIGKILL) while it writes leaves the temporary file: the name of the target, a full stop and six letters
    /// or digits ("walk.gpx.Xa3b9Z"), and for a moment before that one whose name ends with a hyphen as well
    /// ("walk.gpx.Xa3b9Z-").
    bool isAtomic = true;
    /// Called for everything that is left out, while the document is written; may be empty. What it throws ends the
    /// writing.
    std::function<void(const GpxUnwritten&)> unwritten;
};

/// Writes documents by the published schemas of GPX 1.0 and 1.1.
///
/// **What is written.** All of the model, and of a document that was read completely (GpxParser::SetComplete)
/// everything that the file had and the version has a place for: what the model has no member for, the elements of
/// other programs with the namespaces that they need, the unread elements. What is as it was read is written as it
/// stood: digits, fractions of seconds, time zones. What was set since is written in its place, numbers in the shortest
/// form that reads back the same. Elements come in the order of the schema; elements of other programs are in
/// `extensions` in GPX 1.1 and after the standard ones in 1.0. Elements in the namespace of GPX 1.0 that 1.1 does not
/// have are in `extensions` as well. The result is valid when the file was valid, and what the model has is valid. Left
/// out are the root's `creator` and schema location, and comments outside of what is written as it stood.
///
/// **What has no place** in the version is left out and reported to GpxStandardOptions::unwritten: in GPX 1.0 second
/// links, types of links and routes and tracks, copyright, the author's link, extensions of segments; in both a number
/// that is infinite or no number, and an empty form key.
///
/// Writing the same document again gives the same bytes, and so does writing what was written and read completely.
/// Const; documents may be written by several threads at once.
///
///     GpxParser parser;
///     parser.SetComplete();
///     GpxDocument document;
///     parser.Parse("walk.gpx", document);
///     GpxStandardWriter().WriteToFile(document, "walk-1.1.gpx");
class VEXATRANSFERLIB_API GpxStandardWriter {
public:
    /// A writer of GPX 1.1, or as the options say.
    explicit GpxStandardWriter(GpxStandardOptions options = {});
    /// \{
    /// The options are copied.
    GpxStandardWriter(const GpxStandardWriter&);
    GpxStandardWriter& operator=(const GpxStandardWriter&);
    /// \}
    ~GpxStandardWriter();

    // All throw, before anything is written, dbc::precondition_error "Cannot write to unknown GPX schema version.", and
    // for the first text with a character that XML cannot hold "The name of waypoint 3 has a character that XML cannot
    // hold: U+0001." They also throw std::bad_alloc and what the options' function throws.

    /// Passes the text on in pieces of some 64 kB, as it is made; the pieces are valid during the call. What \p receive
    /// throws ends the writing.
    void Write(const GpxDocument& document, const std::function<void(std::string_view)>& receive) const;
    /// The text in UTF-8.
    std::string GetText(const GpxDocument& document) const;
    /// Writes a file, whose name is converted to ICU's default code page. Permissions of a file that is replaced stay
    /// as they are; a symbolic link is followed. When this returns, the bytes are on the disk (fsync), unless the
    /// options say otherwise.
    /// \throws GpxWriteError "Unable to create the GPX file. Target could be write protected or full.", "Unable to
    ///         write the GPX file. Target could be write protected or full."; the target is then as it was, if the
    ///         writing is atomic
    /// \throws std::runtime_error when the name cannot be converted
    void WriteToFile(const GpxDocument& document, const icu::UnicodeString& fileName) const;
    /// The same for a name in the bytes that the system is given.
    void WriteFile(const GpxDocument& document, const std::string& fileName) const;

private:
    GpxStandardOptions options_;
};

} // namespace vexaTransferLib
