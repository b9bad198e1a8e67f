// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Reads the head of a GPX file: the vendor's metadata, the document's time, and what any GPX file says of itself.

#include <common/Export.h>
#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxHead.h>
#include <vexaTransferLib/GpxInputLimits.h>

#include <boost/shared_ptr.hpp>
#include <unicode/unistr.h>
#include <xercesc/sax/ErrorHandler.hpp>
#include <xercesc/sax/InputSource.hpp>
#include <xercesc/sax2/ContentHandler.hpp>
#include <xercesc/sax2/SAX2XMLReader.hpp>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace vexaTransferLib {

namespace text {
class UsNumberFormat;
}
namespace reader {
class HeadReader;
}

/// How a scan has ended.
enum GpxScanEnd : std::uint32_t {
    kGpxScanNone = 0,      ///< nothing has been scanned
    kGpxScanComplete = 1,  ///< at the end of a file that has no waypoint, route or track
    kGpxScanContent = 2,   ///< at the first waypoint, route or track: the whole head was read
    kGpxScanMissing = 3,   ///< the file could not be opened, or nothing could be read of it
    kGpxScanIllFormed = 4, ///< at something that is no XML, or a namespace that is not declared
    kGpxScanRefused = 5,   ///< by SetUntrusted: a document type, a limit, an encoding, an address
    kGpxScanFailed = 6     ///< for another reason: memory ran out, or the host's source has thrown
};

/// Scans a GPX file up to its first waypoint, route or track and keeps the vendor's metadata records, the time, and
/// the GpxHead, which files of all programs have: what a host wants to know of a file before, or instead of, reading
/// it. The cost is that of the head, whatever the size of the file.
///
/// The host initialises Xerces before the first scan and deletes the scanner before it terminates Xerces: the
/// scanner keeps its XML reader until then. One scanner scans any number of files, one after another, on one
/// thread at a time.
///
///     GpxTarvikExtParser scanner;
///     scanner.Parse("walk.gpx");
///     if (scanner.GetGISMetaData())
///         show(scanner.GetGISMetaData()->layerName);
///
/// A scan never throws: a file that is missing or ill-formed leaves what was found before the error.
/// GetScanEnd says how the scan ended. Without memory for ICU's number format, which the first count needs, the process
/// stops.
///
/// **What may surprise.** Vendor elements are found by their namespace and name without regard to case,
/// wherever in the head they are. Counts are the low 32 bits of what the US number format stores for the
/// text, and `trktotalkm` is the same storage read as a double: a total without a fraction ("12") reads as a
/// number near 6e-323, and a count with one ("7.9") as -1717986918. "time" elements in a GPX namespace all
/// count, the last one wins.
///
/// **Where a scan stops.** At the first `wpt`, `rte` or `trk` element, in any case of letters, in the namespace of
/// GPX 1.0 or 1.1. It does not stop at the end of `metadata`, because vendor elements may follow it. Elements in
/// another namespace of GPX (`https`) or in none do not end it: such a file is read to its end, with the cost of its
/// size, and vendor elements count wherever they are in it. GetHead is of what precedes the first waypoint, route or
/// track in these files too, and SetUntrusted ends their scan at the limits of a head, which keeps what precedes
/// them.
///
/// **A warning.** XML lets a file name other files and servers in entities, and they are read. SetUntrusted
/// refuses that: use it wherever files may come from somebody else.
class VEXATRANSFERLIB_API GpxTarvikExtParser : public xercesc::ContentHandler {
public:
    GpxTarvikExtParser();
    ~GpxTarvikExtParser() override;
    GpxTarvikExtParser(const GpxTarvikExtParser&) = delete;
    GpxTarvikExtParser& operator=(const GpxTarvikExtParser&) = delete;

    /// Forgets the results of an earlier scan and scans the file. Never throws. An empty path, and one with a U+0000
    /// or a lone surrogate, only writes the contract report; the earlier results then stay.
    void Parse(const icu::UnicodeString& path);
    /// The same of a file whose name need not be text: \p path is the very bytes that the system is given, and never
    /// an address. One that is empty or has a zero byte only writes the contract report.
    void ParseFile(const std::string& path);

    /// The same from wherever the host has the bytes: a buffer in memory (`xercesc::MemBufInputSource`), an
    /// entry of an archive. The source gives a stream, which is read as far as the head goes and not at all
    /// beyond what Xerces reads ahead (48 KiB).
    void ParseSource(const xercesc::InputSource& source);

    /// Takes files from now on as untrusted: a document type declaration, an encoding that
    /// GpxParser::SetUntrusted refuses, anything beyond the limits (those of points and objects do not matter here,
    /// those of the head matter here only), and a path that is an address end the scan as kGpxScanRefused. No
    /// other file is opened, and no server is contacted.
    void SetUntrusted(const GpxInputLimits& limits = GpxInputLimits());
    /// The default.
    void SetTrusted();

    /// \{
    /// The results of the last scan; null when the head has none of the record's elements. A record stays
    /// valid when the scanner scans again or is gone.
    boost::shared_ptr<GPXStats> GetStats() const;
    boost::shared_ptr<AnnotateMetaData> GetAnnotateMetaData() const;
    boost::shared_ptr<GISMetaData> GetGISMetaData() const;
    /// \}
    /// How the last scan ended; kGpxScanNone before the first. An empty path is no scan.
    GpxScanEnd GetScanEnd() const;
    /// Milliseconds since 1970-01-01T00:00:00 UTC; 0 when the head has no time.
    double GetDocumentTime() const;
    /// What the head says of the file, in GPX of any program: name, author, bounds, and how the head ended. Of the
    /// last scan; empty before the first. Valid as long as the scanner, and changed by its next scan. It costs next
    /// to nothing beside the scan: a copy of the texts in it, and some comparisons for each element of the head.
    const GpxHead& GetHead() const;

    /// \{
    /// Called by Xerces during a scan.
    void characters(const XMLCh* const chars, const XMLSize_t length) override;
    void endDocument() override;
    void endElement(const XMLCh* const uri, const XMLCh* const localname, const XMLCh* const qname) override;
    void ignorableWhitespace(const XMLCh* const chars, const XMLSize_t length) override;
    void processingInstruction(const XMLCh* const target, const XMLCh* const data) override;
    void setDocumentLocator(const xercesc::Locator* const locator) override;
    void startDocument() override;
    /// \throws std::runtime_error "Finished Parsing" at the first waypoint, track or route, which ends the
    ///         scan
    void startElement(const XMLCh* const uri, const XMLCh* const localname, const XMLCh* const qname,
                      const xercesc::Attributes& attributes) override;
    void startPrefixMapping(const XMLCh* const prefix, const XMLCh* const uri) override;
    void endPrefixMapping(const XMLCh* const prefix) override;
    void skippedEntity(const XMLCh* const name) override;
    /// \}

private:
    VEXATRANSFERLIB_LOCAL void Scan(const std::function<void()>& feed);
    VEXATRANSFERLIB_LOCAL void Configure();
    VEXATRANSFERLIB_LOCAL GpxScanEnd EndOf(const std::function<void()>& feed);
    [[noreturn]] VEXATRANSFERLIB_LOCAL void FinishScan();
    void Reset();
    void TakeVendorElement(const icu::UnicodeString& name);
    void TakeTime();
    std::int64_t StoredNumber();

    icu::UnicodeString buffer_;
    std::unique_ptr<reader::HeadReader> head_;
    std::unique_ptr<xercesc::ErrorHandler> errors_; ///< outlives the reader
    std::unique_ptr<xercesc::SAX2XMLReader> reader_;
    std::optional<GpxInputLimits> limits_; ///< of untrusted files
    boost::shared_ptr<GPXStats> stats_;
    boost::shared_ptr<AnnotateMetaData> annotateMetaData_;
    boost::shared_ptr<GISMetaData> gisMetaData_;
    double documentTime_;
    GpxScanEnd scanEnd_ = kGpxScanNone;
    bool isIllFormed_ = false;
    bool isOpen_ = false;     ///< the last scan has found a file
    bool hasContent_ = false; ///< and ended at its content
    std::unique_ptr<text::UsNumberFormat> numberFormat_;
};

} // namespace vexaTransferLib
