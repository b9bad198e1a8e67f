// SPDX-License-Identifier: MIT
#include "support/ObservedReading.h"

#include "support/GpxText.h"
#include "support/RecordingObserver.h"

#include <vexaTransferLib/GpxParser.h>

#include <gtest/gtest.h>

namespace vexaTransferLib::testing_support {

namespace {

std::string Read(const std::string& bytes) {
    RecordingObserver observer;
    GpxParser parser;
    parser.SetObserver(&observer);
    GpxDocument document;
    parser.Parse(bytes, u".gpx", document);
    return observer.skipped;
}

} // namespace

std::string GpxFileText(const std::string& version, const std::string& attributes,
                        const std::string& children) {
    return "<gpx version='" + version + "' xmlns='" + (version == "1.0" ? kGpx10Uri : kGpx11Uri) + "' " +
           attributes + ">" + children + "</gpx>";
}

std::string ReportsOf(const std::string& bytes) {
    std::string reports = Read(bytes);
    if (bytes.starts_with("<!"))
        return reports;
    // Not UTF-8, and so not plain.
    EXPECT_EQ(Read("<?xml version='1.0' encoding='ISO-8859-1'?>" + bytes), reports) << "from events";
    EXPECT_EQ(Read("<!DOCTYPE gpx>" + bytes), reports) << "from the DOM";
    return reports;
}

std::string ReportsOfChildren(const std::string& children) {
    return ReportsOf(GpxFileText("1.1", "", children));
}

} // namespace vexaTransferLib::testing_support
