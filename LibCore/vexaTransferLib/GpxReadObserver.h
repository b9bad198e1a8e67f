// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// What a host may watch, and stop, while a GPX file is read.

#include <common/Export.h>

#include <cstdint>
#include <string>

namespace vexaTransferLib {

/// How serious a message of the XML parser is. A warning does not make the parse fail, the others do.
enum GpxMessageSeverity : std::uint32_t {
    kGpxMessageWarning = 0,
    kGpxMessageError = 1,
    kGpxMessageFatalError = 2
};

/// A message of the XML parser.
struct GpxParserMessage {
    GpxMessageSeverity severity = kGpxMessageError; ///< how serious it is
    std::uint64_t line = 0;   ///< from 1; 0 when it is not known, as for a file that cannot be opened
    std::uint64_t column = 0; ///< from 1; 0 when it is not known
    std::string text;         ///< in English unless Xerces was initialised otherwise; UTF-8
    std::string file;         ///< which file it is about, as Xerces names it: an external entity's, perhaps
};

/// Why something of a file is not in the document, or not as the file has it.
enum GpxSkipReason : std::uint32_t {
    kGpxForeignNamespace =
        1, ///< an element that is in no namespace where its parent is read from; or an attribute
    kGpxUnknownElement = 2, ///< an element that the library does not keep
    kGpxOtherVersion = 3,   ///< an element of the other GPX version than that of the file
    kGpxOutOfOrder = 4,     ///< a waypoint after a route, a route's name after its first point ...
    /// A number, time or fix that cannot be read; a text that is not the first child, or beside elements that are
    /// read.
    kGpxUnreadable = 5,
    kGpxRefused = 6,    ///< reading it failed; the message is the error's
    kGpxIncomplete = 7, ///< lacks what it needs: a log without a date, a `urlname` without its `url` ...
    kGpxReplaced = 8,   ///< another element was kept in its place: the second link, a `desc` for a `cmt` ...
    kGpxUnreadAttribute = 9, ///< an attribute that the library does not keep: the `id` of a geocache ...
    kGpxRounded =
        10, ///< digits that are not written again: the tenth decimal of a latitude, a fraction of a second
    kGpxCleaned = 11,  ///< the text of a geocache, which the text cleaner has changed
    kGpxInvented = 12, ///< the file does not have it: the name of the document, taken from that of the file
    kGpxChanged =
        13, ///< the document has another value or place for it: a log's id that is too large, a `cmt` ...; a
            ///< character that only XML 1.1 has
    kGpxTolerated = 14 ///< read completely although it is not as it should be; nothing is lost
};

/// One thing that the reader has skipped or changed. What is below a skipped element, and its attributes, are not
/// reported again.
struct GpxSkippedElement {
    std::string element; ///< local names from the root, UTF-8: "gpx/trk/trkseg/trkpt/ele"
    /// \{
    /// Line and column, from 1, of what follows the element's start tag; 0 when they are not known, as for every
    /// file that needs a DOM (see GpxParser::Parse).
    std::uint64_t line = 0;
    std::uint64_t column = 0;
    /// \}
    GpxSkipReason reason = kGpxUnknownElement; ///< why it is not in the document, or not as it was
    std::string message;                       ///< for a person, in English, UTF-8
    /// Content of the file is not in the document, or will not be written: of GPX, of geocaches, of the vendor or of
    /// another program. An element that is skipped is no loss when it says nothing: when neither it nor an element in
    /// it has an attribute or a text other than white space. One that is replaced by one that says the same is none
    /// either.
    bool isLoss = false;
    std::string attribute; ///< its name with its prefix, UTF-8: "id"; empty when the whole element is meant
};

/// Receives reports while a GpxParser reads; see GpxParser::SetObserver.
///
/// Every operation is called by the thread that reads, before the reading operation of the parser returns, and
/// does nothing unless it is overridden. What it throws ends the reading and leaves the parser's caller, with the
/// document of GpxParser::Parse unchanged. It must not use the parser that calls it.
///
///     class Bar : public GpxReadObserver {
///     public:
///         bool Progress(std::uint64_t bytesRead, std::uint64_t bytesInAll) override {
///             Draw(bytesRead, bytesInAll);
///             return !stopPressed;
///         }
///     };
class VEXATRANSFERLIB_API GpxReadObserver {
public:
    GpxReadObserver() = default;
    /// \{
    /// For the copies of a derived class: there is nothing here to copy.
    GpxReadObserver(const GpxReadObserver&) = default;
    GpxReadObserver& operator=(const GpxReadObserver&) = default;
    /// \}
    virtual ~GpxReadObserver();

    /// Called at the start with 0 bytes, then repeatedly, and with everything read at the end: never more than some
    /// 300 times a file. Numbers do not fall within a file, except that a file that proves to need a DOM is started
    /// again.
    ///
    /// Before the first call, a regular file in UTF-8 is looked through once, which takes less than a second for a
    /// gigabyte in memory and cannot be cancelled.
    ///
    /// A long element is no exception: this is called while its bytes are read and then, with the same numbers as
    /// before, while its children are, which only starts when the XML parser has finished it. So it may be called
    /// several times with everything read. It is not called in the middle of the 48 kB of the file that are
    /// taken at once, of one value, and of the cleaning of one geocache text (a megabyte takes about a tenth of a
    /// second).
    /// \param bytesRead how much of the file has been taken, before decoding
    /// \param bytesInAll the file's length; 0 when it is not known, as for a pipe or an address
    /// \return false to cancel: the reading then ends with GpxReadError "The reading of the GPX file was cancelled:
    ///         PATH", the document unchanged
    virtual bool Progress(std::uint64_t bytesRead, std::uint64_t bytesInAll);

    /// Called before the error handler of the parser is, for each of its calls.
    virtual void ParserMessage(const GpxParserMessage& message);

    /// Called roughly in the order of the file: an element that another one replaces is reported when that other
    /// one is read. Some calls may already have been made for a file that then fails to be read.
    ///
    /// An element that is kept, but not as it was, is reported too: with each attribute that nothing reads, and when
    /// its number, time or text is written otherwise than it was read.
    ///
    /// Not reported: namespace declarations, attributes for XML schemas (`xsi:schemaLocation`) and empty ones, the
    /// zone of a time, blanks around a number, white space between elements, comments, and processing instructions.
    virtual void Skipped(const GpxSkippedElement& what);
};

} // namespace vexaTransferLib
