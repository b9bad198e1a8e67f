// SPDX-License-Identifier: MIT
// Provokes each kind of error and tells them apart: catch_errors
#include <common/UnicodeStrUtils.h>
#include <common/dbc.h>
#include <cstring>
#include <functional>
#include <iostream>
#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxError.h>
#include <vexaTransferLib/GpxParser.h>
#include <xercesc/util/PlatformUtils.hpp>

using namespace vexaTransferLib;

// What a failed reading tells beyond its message.
void PrintBadFile(const std::exception& error, const GpxReadErrorDetails& details) {
    std::cout << "bad file:      " << error.what() << '\n';
    if (details.kind == GpxReadErrorKind::kNotOpened)
        std::cout << "               (it cannot be opened)\n";
    if (details.line != 0)
        std::cout << "               (line " << details.line << ", column " << details.column << ")\n";
    if (!details.parserMessage.empty())
        std::cout << "               (the XML parser: " << details.parserMessage << ")\n";
}

void Try(const std::function<void()>& action) {
    try {
        action();
    } catch (const GpxReadError& error) { // the file is wrong: tell the user where
        PrintBadFile(error, error.Details());
    } catch (const GpxReadValueError& error) { // the same, of a value that the model refuses
        PrintBadFile(error, error.Details());
    } catch (const GpxWriteError& error) { // the disk, or the name that the user has chosen
        std::cout << "not written:   " << error.what() << '\n'
                  << "               (" << std::strerror(error.Details().systemError) << ")\n";
    } catch (const dbc::precondition_error& error) { // this program is wrong
        std::cout << "bad argument:  " << error.what() << '\n';
    } catch (const dbc::invariant_error& error) { // this program is wrong, too
        std::cout << "wrong object:  " << error.what() << '\n';
    } catch (const dbc::postcondition_error& error) { // the file is, or the disk: tell the user
        std::cout << "could not do:  " << error.what() << '\n';
    } catch (const std::exception& error) { // no memory, no such code page
        std::cout << "anything else: " << error.what() << '\n';
    }
}

int main() {
    xercesc::XMLPlatformUtils::Initialize();
    Try([] { GpxPoint(kGpxWaypoint, 91.0, 0.0); });
    Try([] {
        GpxGroundspeakCache cache;
        GpxPoint(kGpxTrackPoint, 46.95, 7.44).GetGroundspeakCache(cache);
    });
    Try([] {
        GpxDocument document;
        GpxParser().Parse("/nowhere/walk.gpx", document);
    });
    Try([] {
        GpxDocument document;
        GpxParser().Parse("<gpx version='1.1'>\n<wpt>\n</gpx>", u"mail", document);
    });
    Try([] {
        GpxDocument document;
        GpxParser().Parse("<gpx version='1.1' xmlns='http://www.topografix.com/GPX/1/1'>\n"
                          "<wpt lat='91' lon='7'/></gpx>",
                          u"mail", document);
    });
    Try([] {
        const GpxVersion version = GpxVersion::GetLatestVersion();
        GpxDocument().WriteToFile(version, u"example", u"https://example.org/", u"/nowhere/walk.gpx");
    });
    Try([] { UnicodeStrUtils::UnicodeStringToStlString(u"Caf\u00E9", "no-such-code-page"); });
    xercesc::XMLPlatformUtils::Terminate();
}
