// SPDX-License-Identifier: MIT
#include <vexagpx/editing/EditInput.h>

#include "support/Tool.h"
#include "support/XercesPlatform.h"

#include "support/ZipBuilder.h"

#include <functional>
#include <stdexcept>

namespace {

using cli::Folder;
using testing::HasSubstr;
using vexagpx::OpenForEditing;
using vexagpx::ReadForEditing;

const std::string kGpx =
    "<gpx version='1.1' xmlns='http://www.topografix.com/GPX/1/1'><wpt lat='1' lon='2'/></gpx>";

std::string Refusal(const std::function<void()>& open) {
    try {
        open();
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "nothing was thrown";
}

TEST(EditInputTest, AFileIsReadCompletely) {
    const cli::XercesPlatform platform;
    const Folder folder;
    const vexaTransferLib::GpxDocument document = ReadForEditing(folder.Write("a.gpx", kGpx), {});
    EXPECT_EQ(document.GetWaypointCount(), 1U);
    EXPECT_TRUE(document.GetElement());
}

TEST(EditInputTest, FoldersArchivesAndMissingFilesAreRefused) {
    const Folder folder;
    testing_support::ZipEntry entry;
    entry.name = "a.gpx";
    entry.content = kGpx;
    const std::string zip = folder.Write("a.zip", testing_support::BuildZip({entry}));
    EXPECT_EQ(Refusal([&] { OpenForEditing(zip, {}); }),
              "An archive cannot be changed; vexagpx zip extract writes what is in it. (" + zip + ")");
    EXPECT_THAT(Refusal([&] { OpenForEditing(folder.Path(), {}); }),
                HasSubstr("This is a folder, and one file"));
    EXPECT_THAT(Refusal([&] { OpenForEditing(folder.File("none.gpx"), {}); }), HasSubstr("none.gpx"));
}

} // namespace
