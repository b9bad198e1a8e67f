// SPDX-License-Identifier: MIT
// Provokes each kind of error and tells them apart: catch_errors
#include <common/UnicodeStrUtils.h>
#include <common/dbc.h>
#include <functional>
#include <iostream>
#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxParser.h>
#include <xercesc/util/PlatformUtils.hpp>

using namespace vexaTransferLib;

void Try(const std::function<void()>& action) {
    try {
        action();
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
    Try([] { UnicodeStrUtils::UnicodeStringToStlString(u"Caf\u00E9", "no-such-code-page"); });
    xercesc::XMLPlatformUtils::Terminate();
}
