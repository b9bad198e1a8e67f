// SPDX-License-Identifier: MIT
#include <vexagpx/commands/Plot.h>

#include <vexagpx/input/DocumentReading.h>
#include <vexagpx/output/Destination.h>
#include <vexagpx/page/CollectPage.h>
#include <vexagpx/page/Page.h>
#include <vexagpx/page/PathThinning.h>
#include <vexagpx/process/Messages.h>

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace vexagpx {

bool Plot(const PlotOptions& options, Output& standardOutput) {
    return RunReportingErrors(options.out, [&] {
        for (const std::string& file : options.files)
            if (IsSameFile(file, options.out))
                throw std::runtime_error(options.out + " is one of the files to read.");
        Destination destination(options.out);
        std::vector<PageDocument> documents;
        const bool areRead = ReadDocuments(options.files, options.rules,
                                           [&](const DocumentSource& source, const auto& document) {
                                               documents.push_back(CollectPage(document, source.Text()));
                                           });
        if (documents.empty())
            return false;
        ThinDocuments(documents, kPagePoints);
        Output page([&](std::string_view piece) { destination.Write(piece, standardOutput); });
        WritePage(documents, page);
        page.Flush();
        destination.Commit(standardOutput);
        return areRead;
    });
}

} // namespace vexagpx
