// SPDX-License-Identifier: MIT
#include <vexagpx/report/LossReportText.h>

#include "support/Tool.h"

#include <string>
#include <utility>
#include <vector>

#include <fcntl.h>

namespace {

using cli::Folder;
using namespace vexagpx;
using namespace vexaTransferLib;

TEST(LossReportTextTest, SaysInPlainWordsWhatTheReportsComeTo) {
    const std::vector<std::pair<CheckTotals, const char*>> rows = {
        {{1, 0, 0, 0}, "Everything was read."},
        {{1, 0, 1, 0}, "Everything that a document can hold was read. 1 other thing was skipped or changed."},
        {{1, 0, 5, 0},
         "Everything that a document can hold was read. 5 other things were skipped or changed."},
        {{1, 0, 1, 1}, "1 thing was skipped or changed, which is a loss."},
        {{1, 0, 3, 2}, "3 things were skipped or changed, and 2 of them are losses."},
        {{1, 0, 3, 3}, "3 things were skipped or changed, and all of them are losses."},
        {{0, 1, 0, 0}, "1 file could not be read."},
        {{1, 2, 0, 0}, "2 files could not be read. Everything else was read."},
        {{1, 1, 2, 0},
         "1 file could not be read. Everything else that a document can hold was read. 2 other things were "
         "skipped or changed."},
        {{1, 1, 2, 1},
         "1 file could not be read. 2 things were skipped or changed, and 1 of them is a loss."},
    };
    for (const auto& [totals, expected] : rows)
        EXPECT_EQ(SummaryText(totals), expected);
}

TEST(LossReportTextTest, MessagesOfTheParserHaveLocationSeverityAndFile) {
    LossReport report(false);
    report.ParserMessage({kGpxMessageWarning, 3, 7, "odd", ""});
    report.ParserMessage({kGpxMessageError, 0, 0, "gone", "other.xml"});
    const Folder folder;
    Output out(::open(folder.Write("out", "").c_str(), O_WRONLY));
    WriteLossReportText("walk.gpx", nullptr, {report}, out);
    out.Close();
    EXPECT_EQ(cli::ReadFile(folder.File("out")), "walk.gpx\n"
                                                 "  It could not be read.\n"
                                                 "\n"
                                                 "Messages of the XML parser\n"
                                                 "  -  error: gone\n"
                                                 "      in other.xml\n"
                                                 "  3:7  warning: odd\n");
}

} // namespace
