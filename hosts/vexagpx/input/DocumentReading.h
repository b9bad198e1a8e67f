// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/input/Archive.h>
#include <vexagpx/input/FileParser.h>
#include <vexagpx/input/InputRules.h>

#include <functional>
#include <string>
#include <vector>

namespace vexagpx {

/// Where a document was read from.
struct DocumentSource {
    const std::string& file;  ///< as the command line had it
    const std::string* entry; ///< the printed name of an archive's entry; null for a file

    /// For a heading.
    std::string Text() const { return entry == nullptr ? file : file + ": " + *entry; }
};

using TakeDocument = std::function<void(const DocumentSource&, vexaTransferLib::GpxDocument&)>;
/// With the archive at an entry that is GPX by its name.
using TakeEntry = std::function<void(Archive&)>;

/// The file of an argument, for reading it as a document. Waits for what comes through a pipe.
/// \throws what InputFile throws
InputFile OpenDocument(const std::string& argument, const ArchiveLimits& limits);

/// Reads the files one after another, and of archives every entry that is GPX by its name. False when
/// something could not be read; that has been told, and the rest was read all the same.
bool ReadDocuments(const std::vector<std::string>& arguments, const InputRules& rules,
                   const TakeDocument& take);

/// The document of the current entry.
/// \throws what FileParser::ReadBytes throws, and the archive
void ReadEntry(FileParser& parser, Archive& archive, const std::string& argument,
               vexaTransferLib::GpxDocument& document);

/// Goes through the entries that are GPX by their name. An error that `take` throws is told, and the next
/// entry taken.
/// \return whether all went well, which it did not when there was no such entry
bool ForEachGpxEntry(const InputFile& file, const ArchiveLimits& limits, const TakeEntry& take);

} // namespace vexagpx
