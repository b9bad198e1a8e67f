// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Writing a document back so that only its changes differ.

#include <common/Export.h>
#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxStandardWriter.h>

#include <unicode/unistr.h>

#include <functional>
#include <string>
#include <string_view>

namespace vexaTransferLib {

/// How a GpxSaver saves.
struct VEXATRANSFERLIB_API GpxSaveOptions {
    /// True writes U+FFFD in place of a character that XML cannot hold; false refuses the document.
    bool replacesCharacters = false;
    /// As GpxStandardOptions::isAtomic.
    bool isAtomic = true;
    /// Called for everything that the version of the file has no place for; may be empty. What it throws ends the
    /// saving.
    std::function<void(const GpxUnwritten&)> unwritten;
};

/// Writes a document that was read completely (GpxParser::SetComplete) back, with what was changed since.
///
/// **What was not changed** is byte for byte as it stood: white space, order, attributes, prefixes, comments, digits,
/// references. An unchanged document that was a plain file in UTF-8 gives the very same bytes. What was another file
/// (in another encoding, with a document type, in XML 1.1) is saved in UTF-8 as the library keeps it, with a
/// declaration that says so.
///
/// **What was changed:** the text of a changed value takes the place of the old one; its element keeps its attributes.
/// A new element comes where the schema wants it, indented as its neighbours are. What was removed goes with its line.
/// An object that was moved takes its text along. An object that is new, or from another document, is written as
/// GpxStandardWriter writes it, in the version of the file, with the namespaces that it needs. Comments between objects
/// stay where they are. What GpxElementEditor and GpxMetadataEditor changed is written as they say.
///
/// The copy of a document saves as the original does. Const; documents may be saved by several threads at once.
///
/// **Costs:** what is unchanged is copied. A list of which objects were added, removed or moved is read again, once.
/// The memory is that of the changes.
///
///     GpxParser parser;
///     parser.SetComplete();
///     GpxDocument document;
///     parser.Parse("walk.gpx", document);
///     document.EditTracks()[0].SetName("Round the lake");
///     GpxSaver().SaveToFile(document, "walk.gpx");
class VEXATRANSFERLIB_API GpxSaver {
public:
    /// A saver with these options.
    explicit GpxSaver(GpxSaveOptions options = {});
    /// \{
    /// The options are copied.
    GpxSaver(const GpxSaver&);
    GpxSaver& operator=(const GpxSaver&);
    /// \}
    ~GpxSaver();

    // All throw, before anything is written, dbc::precondition_error "Only a GPX document that was read completely can
    // be saved.", and for the first text with a character that XML cannot hold "The name of waypoint 3 has a character
    // that XML cannot hold: U+0001." They also throw std::bad_alloc and what the options' function throws.

    /// Passes the text on in pieces, which are valid during the call. What \p receive throws ends the saving.
    void Save(const GpxDocument& document, const std::function<void(std::string_view)>& receive) const;
    /// The text, in UTF-8.
    std::string GetText(const GpxDocument& document) const;
    /// Writes a file, whose name is converted to ICU's default code page; the file that the document was read from may
    /// be it. Everything else is as GpxStandardWriter::WriteToFile says.
    /// \throws GpxWriteError as GpxStandardWriter::WriteToFile does
    /// \throws std::runtime_error when the name cannot be converted
    void SaveToFile(const GpxDocument& document, const icu::UnicodeString& fileName) const;
    /// The same for a name in the bytes that the system is given.
    void SaveFile(const GpxDocument& document, const std::string& fileName) const;

private:
    GpxSaveOptions options_;
};

} // namespace vexaTransferLib
