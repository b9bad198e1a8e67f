// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/commands/Convert.h>
#include <vexagpx/output/Destination.h>

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxReadObserver.h>

#include <memory>
#include <string>

namespace vexagpx {

/// One way to convert documents: hears what the reader says of each, writes it, and tells the user at the end what the
/// results lack.
class Conversion : public vexaTransferLib::GpxReadObserver {
public:
    /// A document is read from now on.
    virtual void StartDocument() = 0;
    /// \param source names what the document was read from
    /// \param entry names it within an archive; empty for a file
    /// \throws std::runtime_error when it cannot be written; the destination is then as it was
    virtual void Write(const vexaTransferLib::GpxDocument& document, const std::string& source,
                       const std::string& entry, Destination& destination, Output& standardOutput) = 0;
    /// \param succeeded everything was read and written
    /// \param isStream the input cannot be read again
    virtual void PrintNotes(bool succeeded, bool isStream) const = 0;
};

/// Writes everything that was read completely, by the published schemas.
std::unique_ptr<Conversion> MakeCompleteConversion(const ConvertOptions& options);
/// Writes what hosts always wrote.
std::unique_ptr<Conversion> MakeHostConversion(const ConvertOptions& options);

/// `"vexagpx check a.gpx" lists them.`, as the end of a note.
/// \param command with its options: "vexagpx check"
std::string ListedBy(const std::string& command, const ConvertOptions& options, bool isOne, bool isStream);

} // namespace vexagpx
