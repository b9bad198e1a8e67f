// SPDX-License-Identifier: MIT
#include <vexagpx/Convert.h>

#include <vexagpx/Culprit.h>
#include <vexagpx/FileParser.h>
#include <vexagpx/Messages.h>
#include <vexagpx/Target.h>
#include <vexagpx/WellFormed.h>

#include <exception>
#include <optional>

namespace vexagpx {

using namespace vexaTransferLib;

namespace {

icu::UnicodeString FromUtf8(const std::string& text) {
    return icu::UnicodeString::fromUTF8(text);
}

} // namespace

bool Convert(const ConvertRequest& request, Output& standardOutput) {
    GpxDocument document;
    if (!FileParser().ReadFile(request.in, document))
        return false;
    const GpxVersion version(FromUtf8(request.version));
    const icu::UnicodeString name = FromUtf8(request.applicationName);
    const icu::UnicodeString url = FromUtf8(request.applicationUrl);
    try {
        Target target(request.out);
        document.WriteToFile(version, name, url, FromUtf8(target.TemporaryPath()));
        if (const std::optional<std::string> complaint = FindXmlError(target.TemporaryPath())) {
            Complain("The result would not be well-formed XML because of the " +
                     FindCulprit(document, version, name, url, target.TemporaryPath()) + ". " + request.out +
                     " was not written. (" + *complaint + ")");
            return false;
        }
        target.Commit(standardOutput);
    } catch (const OutputError&) {
        throw;
    } catch (const std::exception& failure) {
        Complain(failure.what());
        return false;
    }
    if (version.IsGpx10())
        Complain("Note: from a GPX 1.0 file that it wrote, as " + request.out +
                 ", this library reads no points.");
    return true;
}

} // namespace vexagpx
