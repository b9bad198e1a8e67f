// SPDX-License-Identifier: MIT
#include <vexagpx/commands/Split.h>

#include <vexagpx/editing/EditInput.h>
#include <vexagpx/output/Destination.h>
#include <vexagpx/output/JsonWriter.h>
#include <vexagpx/output/OptionalMembers.h>
#include <vexagpx/output/ResolveBelow.h>
#include <vexagpx/process/Messages.h>
#include <vexagpx/terminal/DisplayText.h>
#include <vexagpx/terminal/Lines.h>

#include <common/dbc.h>
#include <vexaTrackLib/Corrections.h>
#include <vexaTrackLib/Split.h>
#include <vexaTransferLib/GpxMetadata.h>
#include <vexaTransferLib/GpxParser.h>
#include <vexaTransferLib/GpxSaver.h>
#include <vexaTransferLib/GpxStandardWriter.h>

#include <unicode/timezone.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string_view>
#include <vector>

namespace vexagpx {

using namespace vexaTransferLib;
using vexaTrackLib::SplitPart;
using vexaTrackLib::SplitRule;

namespace {

std::shared_ptr<icu::TimeZone> ZoneOf(const std::string& name) {
    return std::shared_ptr<icu::TimeZone>(icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(name)));
}

std::function<double(double)> ClocksOf(const std::string& zone) {
    if (zone.empty())
        return {};
    return [timeZone = ZoneOf(zone)](double time) {
        std::int32_t raw = 0;
        std::int32_t summer = 0;
        UErrorCode error = U_ZERO_ERROR;
        timeZone->getOffset(time, 0, raw, summer, error);
        return U_SUCCESS(error) ? static_cast<double>(raw) + summer : 0.0;
    };
}

/// "2024-05-01".
std::string DateText(double day) {
    const std::chrono::year_month_day date(std::chrono::sys_days(std::chrono::days(static_cast<int>(day))));
    char text[32];
    std::snprintf(text, sizeof text, "%04d-%02u-%02u", static_cast<int>(date.year()),
                  static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()));
    return text;
}

/// Writes the parts of one file.
class SplitRun {
public:
    SplitRun(const SplitOptions& options, Output& standardOutput)
        : options_(options), standardOutput_(standardOutput) {}

    bool Run() {
        std::vector<SplitPart> parts =
            vexaTrackLib::Split(ReadForEditing(options_.in, options_.rules), RuleOf());
        NameFiles(parts);
        if (!options_.dryRun)
            WriteFiles(parts);
        if (options_.json)
            ReportJson(parts);
        else
            ReportText(parts);
        return true;
    }

private:
    SplitRule RuleOf() const {
        SplitRule rule;
        if (options_.pause)
            rule.pause = *options_.pause * 1000.0;
        rule.length = options_.every;
        rule.byDay = options_.byDay;
        rule.clocks = ClocksOf(options_.zone);
        return rule;
    }

    // "walk-2024-05-01.gpx", or "walk-07.gpx".
    void NameFiles(const std::vector<SplitPart>& parts) {
        std::filesystem::path base = std::filesystem::path(options_.in).filename();
        while (base.extension() == ".gz" || base.extension() == ".gpx")
            base.replace_extension();
        const std::string stem = options_.in == kStandardInput ? "track" : base.string();
        const std::size_t digits = std::max<std::size_t>(2, std::to_string(parts.size()).size());
        for (const SplitPart& part : parts) {
            std::string end = std::to_string(files_.size() + 1);
            end.insert(0, digits - std::min(digits, end.size()), '0');
            if (options_.byDay)
                end = part.start ? DateText(part.day) : "without-time";
            std::string name = stem;
            name.append("-").append(end).append(".gpx");
            files_.push_back((std::filesystem::path(options_.folder) / name).string());
        }
    }

    void WriteFiles(std::vector<SplitPart>& parts) {
        for (const std::string& file : files_)
            if (std::filesystem::exists(std::filesystem::symlink_status(file)))
                throw std::runtime_error(file + " exists already; an empty folder takes the parts. (" +
                                         ShownName(options_.in) + ")");
        MakeFolder(options_.folder);
        for (std::size_t i = 0; i < parts.size(); ++i) {
            Destination destination(files_[i]);
            destination.Commit(TextOf(parts[i].document), standardOutput_);
            parts[i].document.Clear();
        }
    }
    // Written anew, because to save each part would cost as much as the whole file.
    std::string TextOf(const GpxDocument& document) const {
        const GpxMetadata metadata(document.GetElement());
        GpxStandardOptions standard;
        standard.version = GpxVersion(metadata.GetVersion() == u"1.0" ? u"1.0" : u"1.1");
        standard.creator = metadata.GetCreator().value_or(standard.creator);
        try {
            std::string text = GpxStandardWriter(standard).GetText(document);
            return metadata.GetBounds() ? WithBounds(text) : text;
        } catch (const dbc::precondition_error& refusal) {
            throw std::runtime_error(std::string(refusal.what()) + " (" + ShownName(options_.in) + ")");
        }
    }
    static std::string WithBounds(const std::string& text) {
        GpxDocument document;
        GpxParser parser;
        parser.SetComplete();
        parser.Parse(text, u"part", document);
        vexaTrackLib::CorrectBounds(document);
        return GpxSaver().GetText(document);
    }

    void ReportText(const std::vector<SplitPart>& parts) {
        WriteHeading(standardOutput_, ShownName(options_.in));
        for (std::size_t i = 0; i < parts.size(); ++i) {
            icu::UnicodeString line = u"  " + Printable(icu::UnicodeString::fromUTF8(files_[i])) + u": " +
                                      icu::UnicodeString::fromUTF8(Counted(parts[i].points, "point"));
            if (parts[i].start)
                line += u", from " + TimeText(*parts[i].start);
            WriteWhole(standardOutput_, line, 4);
        }
        const std::string end = Counted(files_.size(), "file") + (options_.dryRun      ? " would be written."
                                                                  : files_.size() == 1 ? " was written."
                                                                                       : " were written.");
        WriteWhole(standardOutput_, icu::UnicodeString::fromUTF8(end), 0);
        standardOutput_.Flush();
    }
    void ReportJson(const std::vector<SplitPart>& parts) {
        JsonWriter json(standardOutput_);
        json.BeginObject();
        json.Member("file", options_.in);
        json.Member("isWritten", !options_.dryRun);
        json.Key("parts");
        json.BeginArray();
        for (std::size_t i = 0; i < parts.size(); ++i) {
            json.BeginObject();
            json.Member("file", files_[i]);
            json.Member("points", static_cast<std::uint64_t>(parts[i].points));
            TimeMember(json, "start", parts[i].start);
            json.EndObject();
        }
        json.EndArray();
        json.EndObject();
        standardOutput_.Write("\n");
        standardOutput_.Flush();
    }

    const SplitOptions& options_;
    Output& standardOutput_;
    std::vector<std::string> files_;
};

} // namespace

bool IsTimeZone(const std::string& name) {
    return *ZoneOf(name) != icu::TimeZone::getUnknown();
}

bool Split(const SplitOptions& options, Output& standardOutput) {
    return RunReportingErrors(options.in, [&] { return SplitRun(options, standardOutput).Run(); });
}

} // namespace vexagpx
