// SPDX-License-Identifier: MIT
#include <vexagpx/commands/Index.h>

#include <vexagpx/input/DocumentReading.h>
#include <vexagpx/input/FolderFiles.h>
#include <vexagpx/process/Messages.h>
#include <vexagpx/report/Duplicates.h>
#include <vexagpx/report/IndexJson.h>
#include <vexagpx/report/IndexTable.h>
#include <vexagpx/terminal/ProgressBar.h>

#include <vexaTrackLib/ContentHash.h>

#include <exception>
#include <functional>
#include <new>
#include <utility>

namespace vexagpx {

using namespace vexaTransferLib;

namespace {

/// Reads one document after another and keeps none.
class Indexer {
public:
    Indexer(const IndexOptions& options, Output& out)
        : options_(options), out_(out), parser_(options.rules) {}

    bool Run();

private:
    void TakeFile(const std::string& argument);
    void TakeDocument(const GpxDocument& document, IndexEntry source);
    void Try(const IndexEntry& source, const std::function<void()>& read);
    void Add(const IndexEntry& entry);
    void Finish();

    const IndexOptions& options_;
    Output& out_;
    FileParser parser_;
    IndexTable table_;
    Duplicates duplicates_;
    bool succeeded_ = true;
};

bool Indexer::Run() {
    const std::vector<std::string> files = ExpandFolders(options_.files);
    ProgressBar bar("Reading files");
    std::uint64_t done = 0;
    for (const std::string& file : files) {
        IndexEntry source;
        source.file = file;
        Try(source, [&] { TakeFile(file); });
        bar.Update({++done, files.size()});
    }
    Finish();
    return succeeded_;
}

void Indexer::TakeFile(const std::string& argument) {
    const InputFile file = OpenDocument(argument, options_.rules.archives);
    IndexEntry source;
    source.file = argument;
    if (!IsArchive(file)) {
        GpxDocument document;
        parser_.ReadFile(file, document);
        return TakeDocument(document, std::move(source));
    }
    const bool read = ForEachGpxEntry(file, options_.rules.archives, [&](Archive& archive) {
        source.entry = archive.Name();
        Try(source, [&] {
            GpxDocument document;
            ReadEntry(parser_, archive, argument, document);
            TakeDocument(document, source);
        });
    });
    succeeded_ = succeeded_ && read;
}

/// Adds an entry with the error that `read` throws, and reports it.
void Indexer::Try(const IndexEntry& source, const std::function<void()>& read) {
    IndexEntry entry = source;
    try {
        return read();
    } catch (const OutputError&) {
        throw;
    } catch (const std::bad_alloc&) {
        entry.error = "Out of memory. (" + source.Name() + ")";
    } catch (const std::exception& failure) {
        entry.error = failure.what();
    }
    succeeded_ = false;
    PrintError(entry.error);
    Add(entry);
}

void Indexer::TakeDocument(const GpxDocument& document, IndexEntry source) {
    IndexEntry entry = IndexEntryOf(document);
    entry.file = std::move(source.file);
    entry.entry = std::move(source.entry);
    if (options_.duplicates) {
        const vexaTrackLib::ContentHash hash(document);
        if (!hash.IsEmpty())
            entry.content = hash.Text();
    }
    Add(entry);
}

void Indexer::Add(const IndexEntry& entry) {
    duplicates_.Add(entry);
    if (options_.json) {
        WriteIndexJson(entry, out_);
        out_.Flush();
    } else if (!options_.duplicates) {
        table_.Add(entry);
    }
}

void Indexer::Finish() {
    if (options_.duplicates && options_.json)
        duplicates_.WriteJson(out_);
    else if (options_.duplicates)
        duplicates_.WriteText(out_);
    else if (!options_.json)
        table_.Write(out_);
    out_.Flush();
}

} // namespace

bool Index(const IndexOptions& options, Output& out) {
    return Indexer(options, out).Run();
}

} // namespace vexagpx
