// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/input/Archive.h>
#include <vexagpx/input/FileParser.h>
#include <vexagpx/input/InputRules.h>

#include <functional>
#include <string>
#include <vector>

namespace vexagpx {

/// Where a document comes from.
struct DocumentSource {
    const std::string& file;  ///< as on the command line, or below a folder that is there
    const std::string* entry; ///< the printed name of an archive's entry; null for a file
    /// The reader has named the document after the file, which has no name for it. Known only where it is watched for.
    bool isNameInvented = false;

    /// For a heading.
    std::string Text() const { return entry == nullptr ? file : file + ": " + *entry; }
};

using TakeDocument = std::function<void(const DocumentSource&, vexaTransferLib::GpxDocument&)>;
/// Called with the archive at an entry that is GPX by its name.
using TakeEntry = std::function<void(Archive&)>;

/// Opens the file of an argument, to be read as a document. Reads a pipe to its end.
/// \throws what InputFile throws
InputFile OpenDocument(const std::string& argument, const ArchiveLimits& limits);

/// What is found out while documents are read, beside what is in them. It costs time where documents are read as hosts
/// do.
enum class Watched { kNothing, kInventedNames };

/// Reads the files one after another, those of a folder (ForEachFile), and every entry of an archive that is GPX by its
/// name. False when something could not be read. That has been reported, and did not stop the reading of the rest.
bool ReadDocuments(const std::vector<std::string>& arguments, const InputRules& rules,
                   const TakeDocument& take, Watched watched = Watched::kNothing);

/// The current entry of an archive, unpacked, with the name by which messages know it.
struct EntryBytes {
    std::string name;
    std::string bytes;
};

/// \throws what the archive throws
EntryBytes ReadEntryBytes(Archive& archive, const std::string& argument);

/// Reads the document of the current entry.
/// \throws what FileParser::ReadBytes throws, and the archive
void ReadEntry(FileParser& parser, Archive& archive, const std::string& argument,
               vexaTransferLib::GpxDocument& document);

/// Calls `take` for each entry that is GPX by its name. An error that `take` throws is reported, and the next entry
/// follows.
/// \return true without such an error
/// \throws std::runtime_error when there is no such entry
bool ForEachGpxEntry(const InputFile& file, const ArchiveLimits& limits, const TakeEntry& take);

} // namespace vexagpx
