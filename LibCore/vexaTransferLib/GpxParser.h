// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Reads GPX 1.0 and 1.1 files into a GpxDocument.

#include <common/Export.h>
#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxGroundspeakCache.h>
#include <vexaTransferLib/GpxInputLimits.h>
#include <vexaTransferLib/GpxPoint.h>
#include <vexaTransferLib/GpxReadObserver.h>
#include <vexaTransferLib/GpxRoute.h>
#include <vexaTransferLib/GpxTrack.h>
#include <vexaTransferLib/GpxUrl.h>
#include <vexaTransferLib/GpxVersion.h>

#include <boost/scoped_ptr.hpp>
#include <unicode/unistr.h>
#include <xercesc/dom/DOMNode.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/ErrorHandler.hpp>
#include <xercesc/sax/SAXParseException.hpp>

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace vexaTransferLib {

class CleanText;

namespace reader {
class InputName;
class TreeReading;
class XmlInput;
struct ReadSettings;
} // namespace reader

/// The reader of GPX files, and the error handler of the XML parsers that it makes.
///
/// The host calls `xercesc::XMLPlatformUtils::Initialize()` before it makes a parser and keeps the platform
/// until the parser is gone; the library never calls it. One parser reads any number of files, one after another,
/// on one thread at a time; parsers on different threads are independent.
///
///     xercesc::XMLPlatformUtils::Initialize();
///     {
///         GpxParser parser;
///         GpxDocument document;
///         parser.Parse("walk.gpx", document);
///     }
///     xercesc::XMLPlatformUtils::Terminate();
///
/// **What is read.** `name` and `time` of the document (below the root or in `metadata`, whatever the
/// version), the vendor's metadata block, waypoints, routes and tracks in the namespace of the file's own
/// version, links, Groundspeak geocaches (their texts cleaned), and the vendor's extensions.
///
/// **What is skipped in silence.** Standard elements in another namespace than that of the `version`
/// attribute; a `wpt` after a route or track, and a `rte` after a track; a point child, link, route point,
/// track point or segment that cannot be read or that the model refuses (the rest of its parent is read); the
/// extensions of track points and of GPX 1.0; satellites, dilution of precision, numbers. A waypoint without
/// a usable position is not skipped: it ends the reading. Each skipped element is reported to an observer
/// (GpxReadObserver.h), with its line.
///
/// **What may surprise.** A `cmt` becomes the *description* of a point or track and wins over any `desc`; the
/// first of several `desc` is kept. Element text is the first child if it is text, else nothing: a comment before
/// it hides it. Numbers may start with blanks but not end with them.
///
/// **When memory runs out** a reading ends with std::bad_alloc; with xercesc::OutOfMemoryException, which is no
/// std::exception, when the XML parser has none; with std::runtime_error when ICU cannot convert the name (see
/// UnicodeStrUtils.h); or, when ICU cannot convert the file, as if that was ill-formed ("One or more errors ...").
/// There are two exceptions. An element that is skipped when it cannot be read is skipped ("std::bad_alloc" is
/// reported; without memory for the report the reading ends or, from a DOM, the parent is skipped and reported). A
/// geocache text is kept as the cleaner left it. Without memory for ICU's number format, which the vendor's numbers
/// need, the process stops. The parser can be used again.
///
/// **A warning.** By default a file may name other files and servers (external entities, document types), and
/// they are read: what a local file holds can end up in the document, and servers are asked. Nothing limits what
/// the expansion of entities takes, and Xerces 3.2.4 has a known use after free with external document types.
/// SetUntrusted refuses all that: use it wherever files may come from somebody else.
///
/// The public operations on nodes take any node of a Xerces DOM, a null one included; nodes stay the
/// caller's.
class VEXATRANSFERLIB_API GpxParser : public xercesc::ErrorHandler {
public:
    /// \throws dbc::postcondition_error "Unable to construct a text cleaner: " and the reason
    GpxParser();
    ~GpxParser() override;
    GpxParser(const GpxParser&) = delete;
    GpxParser& operator=(const GpxParser&) = delete;

    /// \{
    /// Called by Xerces while a file is parsed. A host that wants all errors of the XML parser derives, notes them,
    /// and calls the base. A warning does nothing; an error or fatal error makes the parse fail at its end, and the
    /// first one is in the details of the GpxReadError.
    void warning(const xercesc::SAXParseException& exception) override;
    void error(const xercesc::SAXParseException& exception) override;
    void fatalError(const xercesc::SAXParseException& exception) override;
    /// \}
    /// Forgets earlier errors; GetParser calls it first.
    void resetErrors() override;

    /// Gives the parser an observer (see GpxReadObserver.h), which the caller owns and which must exist while the
    /// parser reads; null removes it. All operations that read report skipped elements; GetParser and
    /// Parse also report their progress and the XML parser's messages. Not while the parser reads.
    void SetObserver(GpxReadObserver* observer);

    /// Reads files from now on completely; see docs/complete.md. The document then keeps the text of the file, and each
    /// object of it knows its element there (GpxElement.h), so that nothing is lost: what the model has no member for
    /// can be read from the elements. A plain file in UTF-8 is kept byte for byte; any other is kept as XML 1.0 in
    /// UTF-8 with its entities expanded.
    ///
    /// Everything that a person would call readable is read: waypoints after tracks, files without a namespace or a
    /// version or with those of the other version, blanks around numbers and times, texts after comments, times before
    /// 1970. `cmt` and `desc` are two fields, geocache texts are as they stand (CleanText cleans them), and a document
    /// without a name has none. A point without a position that a point can have costs itself only; it is one of the
    /// unread elements of its parent. All that is reported to the observer (kGpxTolerated, kGpxUnreadable,
    /// kGpxReplaced, none of them a loss) and never to the contract report. A character that only XML 1.1 has becomes
    /// U+FFFD, which is a loss (kGpxChanged). Only Parse and ParseFile read completely. Not while the parser reads.
    void SetComplete();
    /// Reads files from now on as hosts always did; this is the default. Not while the parser reads.
    void SetCompatible();

    /// Takes files from now on as untrusted. GetParser and Parse then refuse, with
    /// GpxReadError and the document of Parse unchanged:
    /// - a document type declaration, before anything that it names is opened: "The untrusted GPX file was
    ///   refused: PATH. It has a document type declaration."
    /// - a file beyond one of the limits: "... Its elements are nested deeper than N (limit of element depth).",
    ///   "... One of its texts is longer than N (limit of text length).", "... One of its elements has more
    ///   attributes than N (limit of attributes).", "... It has more different names than N (limit of names).", "...
    ///   It has more namespace declarations in scope than N (limit of namespaces).", "... One of its namespaces is
    ///   longer than N (limit of namespace length).", "... One of its start tags has more bytes than N (limit of tag
    ///   bytes).", and from Parse alone "... It has more points than N (limit of points)." and "... It has more
    ///   objects than N (limit of objects)."
    /// - an encoding in which ASCII bytes can be something else than ASCII characters, such as EBCDIC, UTF-7 and
    ///   ISO-2022-JP: "... Its encoding is read from trusted files only: NAME."
    /// - a path that is an address ("http:...", "file:...") and not the name of a file: "An untrusted GPX file is
    ///   not read from an address: PATH"
    ///
    /// So no other file is opened, and no server is contacted. Not while the parser reads.
    void SetUntrusted(const GpxInputLimits& limits = GpxInputLimits());
    /// The default: document types and addresses are read, and nothing has a limit.
    void SetTrusted();

    /// Parses a file into a DOM tree, which the returned parser owns. Everything in memory: about 1.8 kB for
    /// a track point. Parse does without the tree. Any encoding that Xerces knows; external entities are read.
    /// The points of an untrusted file are not counted here: the limit of points does not hold for a tree.
    ///
    /// The system is given the path in ICU's default code page, unchanged: "way/../walk.gpx" is looked for above
    /// the folder that a link `way` leads to. The XML parser makes it absolute and removes "/./" and, of a
    /// relative path, ".." as text; so messages name the file, and so names of other files in it are resolved.
    /// \throws dbc::precondition_error "The GPX file path was empty or invalid.", which one with a U+0000 or a lone
    ///         surrogate is
    /// \throws GpxReadError, with what else is known: "Error parsing the GPX file: PATH. Error message: ...", "Error
    ///         parsing GPX file: PATH. DOM error code: N", or, for whatever else made the file unreadable,
    ///         "One or more errors encountered while parsing the GPX file: PATH"
    std::unique_ptr<xercesc::XercesDOMParser> GetParser(const icu::UnicodeString& path);

    /// Reads a file into \p document, replacing what it held. The document is named after the file, without
    /// folder (only "/" separates) and extension, unless the file has a `name`.
    ///
    /// A file that is not well-formed leaves the document untouched. A failure after that (no `gpx` root, no
    /// usable version, a waypoint without a position) leaves it cleared and partly filled.
    ///
    /// A plain file costs a fraction of the time of the XML parser, and the memory of the document: a regular file, or
    /// bytes in memory, that is well-formed XML 1.0 in UTF-8 without a document type declaration, with ASCII names and
    /// nothing unusual. Any other file costs about the time of the XML parser, whose errors are those that are
    /// reported. The DOM tree of GetParser is needed, and its memory, for a file with a document type declaration, and
    /// for a path that names no file to read twice: a pipe or an address. While a file is read, the former content of
    /// \p document stays in memory beside the new one; Clear first avoids that. A file that another program changes at
    /// the same time may be reported as ill-formed, and what is skipped may then be reported twice.
    ///
    /// A file whose XML declaration names a version other than 1.0 and 1.1 ends in "DOM error code: 9". Contract
    /// reports about the content may be on standard error before a later part of the file proves to be
    /// ill-formed.
    ///
    /// \throws what GetParser throws
    /// \throws GpxReadError "Unable to interpret the GPX file: PATH. The document object could not be obtained.",
    ///         "The GPX document element was not found."; it and GpxReadValueError with what ParseGpxNode says
    void Parse(const icu::UnicodeString& path, GpxDocument& document);

    /// The same of a file whose name need not be text: \p path is the very bytes that the system is given, and never
    /// an address. What of them is not UTF-8 is U+FFFD in messages and in the document's name.
    /// \throws what Parse throws; the path is invalid when it has a zero byte
    void ParseFile(const std::string& path, GpxDocument& document);

    /// The same from bytes in memory, which are not copied. \p name takes the place of the path: the document
    /// is named after it, messages quote it, relative names of other files are resolved against it. No file
    /// of that name is opened.
    void Parse(std::string_view bytes, const icu::UnicodeString& name, GpxDocument& document);

    /// Reads the children of a root element into \p document, which is not cleared.
    /// \throws dbc::postcondition_error "Unable to read the GPX version.", "Unable to read the GPX file
    ///         nodes.", "Unable to read a GPX child node.", and for a waypoint what ParsePointNode throws
    /// \throws dbc::precondition_error "Unsupported GPX version string.", and for a waypoint what GpxPoint's
    ///         constructor throws
    void ParseGpxNode(xercesc::DOMNode* gpxElement, GpxDocument& document);

    /// True when the node is in the standard namespace of \p version, compared exactly; its name is not
    /// looked at.
    bool IsStdGPXNode(const GpxVersion& version, xercesc::DOMNode* node);

    /// Reads the vendor's metadata block. Both records of the document are replaced by fresh ones, even when
    /// the element is empty. Children match by local name in any namespace; the last of a name counts.
    /// \throws dbc::precondition_error "Invalid node." for a null node
    void ParseExtensionsElement(xercesc::DOMNode* extensions, GpxDocument& document);

    /// Reads a `wpt`, `rtept` or `trkpt`. \p point is assigned at the very end: unchanged when this throws. A
    /// child that fails is skipped.
    /// \throws dbc::precondition_error "Unable to read a GPX point due to an invalid GPX point type.", and
    ///         what GpxPoint's constructor throws
    /// \throws dbc::postcondition_error "Unable to read a GPX point's latitude.", "Unable to read a GPX
    ///         point's longitude.", "Unable to read GPX point child elements."
    void ParsePointNode(const GpxVersion& version, GpxPointType type, xercesc::DOMNode* node,
                        GpxPoint& point);

    /// Reads a GPX 1.1 `link`. \p link is assigned at the very end: unchanged when this throws.
    /// \throws dbc::postcondition_error "A link element was missing the href attribute.", "Unable to read GPX
    ///         link child elements."
    void ParseLinkNode(xercesc::DOMNode* node, GpxUrl& link);

    /// Reads a `rte` and appends the route. What follows the first `rtept` (name, source, type, extensions)
    /// has no effect. A route point that cannot be read or that the route refuses is skipped.
    /// \throws dbc::postcondition_error "Unable to read GPX route child elements."
    void ParseRteNode(const GpxVersion& version, xercesc::DOMNode* node, GpxDocument& document);

    /// Reads a `trk` and appends the track.
    /// \throws dbc::postcondition_error "Unable to read GPX track child elements."
    void ParseTrkNode(const GpxVersion& version, xercesc::DOMNode* node, GpxDocument& document);

    /// Reads a `trkseg` into a new segment of \p track. A point that cannot be read is skipped.
    /// \throws dbc::postcondition_error "Unable to read GPX track segment child elements.", no segment added
    void ParseTrkSegNode(const GpxVersion& version, xercesc::DOMNode* node, GpxTrack& track);

    /// The value readers: each returns false (or null, or an empty string) when there is no value, and then
    /// leaves its output untouched, except that a number followed by other characters is stored although
    /// false is returned. A null node or name writes the contract report. None throws on bad input.

    /// The first child's text, if that is a non-empty text or CDATA section; blanks are kept. The text
    /// belongs to the DOM tree.
    const XMLCh* GetElementText(xercesc::DOMNode* node);
    /// GetElementText in the local code page of Xerces; empty when there is none.
    std::string GetTranscodedElementText(xercesc::DOMNode* node);
    /// Converts to the local code page of Xerces (UTF-8 on Linux); false for null.
    bool XMLChToStdString(const XMLCh* text, std::string& out);
    /// \{
    /// A copy of GetElementText.
    bool GetStringElement(xercesc::DOMNode* node, std::string& out);
    bool GetStringElement(xercesc::DOMNode* node, icu::UnicodeString& out);
    /// \}
    /// The non-empty value of the attribute with that qualified name. The text belongs to the DOM tree.
    const XMLCh* GetAttributeText(xercesc::DOMNode* node, const char* name);
    /// A copy of GetAttributeText.
    bool GetStringAttribute(xercesc::DOMNode* node, const char* name, icu::UnicodeString& out);
    /// \{
    /// A number as StrToDouble reads it.
    bool GetDoubleAttribute(xercesc::DOMNode* node, const char* name, double& out);
    bool GetDoubleElement(xercesc::DOMNode* node, double& out);
    /// \}
    /// GPX time text (see ParseGpxTime), in milliseconds since 1970 UTC.
    bool GetTimeElement(xercesc::DOMNode* node, double& out);
    /// "none", "2d", "3d", "dgps" or "pps", exactly.
    bool GetFixElement(xercesc::DOMNode* node, GpxFix& out);

    /// \{
    /// The vendor's `routeType` or `routePointType` among the children, which must be in the vendor's
    /// namespace; the last recognised one counts. False, and \p type untouched, when there is none.
    /// \throws dbc::postcondition_error "Unable to read GPX extension child elements."
    bool GetTarvikRouteTypeElement(xercesc::DOMNode* extensions, TarvikRouteType& type);
    bool GetTarvikRoutePointTypeElement(xercesc::DOMNode* extensions, TarvikRoutePointType& type);
    /// \}
    /// \{
    /// The vendor's data of a waypoint (form attributes, symbol number, GUID) and of a track (colour),
    /// matched by local name in any namespace. A null node writes the contract report and is skipped.
    void GetTarvikDataElementsFromWptExtensions(xercesc::DOMNode* extensions, GpxPoint& point);
    void GetTarvikDataElementsFromTrkExtensions(xercesc::DOMNode* extensions, GpxTrack& track);
    /// \}

    /// True when the node is in the namespace of Groundspeak cache 1.0 or 1.0.1. A null node writes the
    /// contract report and gives false.
    bool IsGroundspeakNode(xercesc::DOMNode* node);
    /// Reads the first Groundspeak `cache` child. False when there is none.
    bool GetGroundspeakCacheElementFromExtensions(xercesc::DOMNode* extensions, GpxGroundspeakCache& cache);
    /// Reads a `cache` element; \p cache is cleared first. True when at least one of its nine texts was read:
    /// one that has only logs or travel bugs reads as absent.
    bool GetGroundspeakCacheElement(xercesc::DOMNode* cacheNode, GpxGroundspeakCache& cache);
    /// Appends the logs that have date, finder and text. True when there was one.
    bool GetGroundspeakCacheLogs(xercesc::DOMNode* logsNode, GpxGroundspeakCache& cache);
    /// Appends the names of the travel bugs. True when there was one.
    bool GetGroundspeakTravelBugs(xercesc::DOMNode* travelbugsNode, GpxGroundspeakCache& cache);
    /// CleanText::CleanWebTextForTova. A text that cannot be cleaned is left as the cleaner left it; never
    /// throws.
    bool CleanGroundspeakText(icu::UnicodeString& text);

private:
    friend class GpxModelAccess;

    VEXATRANSFERLIB_LOCAL reader::ReadSettings Settings();
    VEXATRANSFERLIB_LOCAL reader::XmlInput MakeInput(const icu::UnicodeString& path) const;
    VEXATRANSFERLIB_LOCAL reader::XmlInput MakeInput(const std::string& fileName) const;
    VEXATRANSFERLIB_LOCAL reader::XmlInput& Limited(reader::XmlInput& input) const;
    VEXATRANSFERLIB_LOCAL void ParseInput(reader::XmlInput& input, GpxDocument& document);
    VEXATRANSFERLIB_LOCAL void ReadCompletely(reader::XmlInput& input, GpxDocument& document);
    VEXATRANSFERLIB_LOCAL bool ReadPlain(reader::XmlInput& input, GpxDocument& document);
    VEXATRANSFERLIB_LOCAL bool ReadEvents(reader::XmlInput& input, GpxDocument& document);
    VEXATRANSFERLIB_LOCAL void ReadTree(reader::XmlInput& input, GpxDocument& document);
    VEXATRANSFERLIB_LOCAL void ParseTree(reader::TreeReading& reading, const reader::InputName& name);
    VEXATRANSFERLIB_LOCAL void CheckErrors(const reader::InputName& name, bool isOpened) const;
    template <class Read>
    VEXATRANSFERLIB_LOCAL auto Reading(Read read);

    boost::scoped_ptr<CleanText> cleaner_;
    std::optional<GpxParserMessage> firstError_; ///< since the last reset
    GpxReadObserver* observer_ = nullptr;
    std::optional<GpxInputLimits> limits_; ///< of untrusted files
    bool isComplete_ = false;
};

/// Reads a number as `strtod` does in the classic locale, whatever the C locale: leading white space, a full
/// stop, exponents, hexadecimal, "inf" and "nan". True only when the whole text was consumed; when something
/// follows the number, false, with the number stored all the same. Null or empty: false, \p out untouched.
VEXATRANSFERLIB_API bool StrToDouble(const char* text, double& out);

/// Reads the integer at the start of a text in US form ("1,234" is 1234, "12abc" is 12, "7.9" is 7, "abc" and
/// " 5" are 0), clamped to 32 bits. Looks at the first 400 code units only.
VEXATRANSFERLIB_API long StrToInt(const icu::UnicodeString& text);

} // namespace vexaTransferLib
