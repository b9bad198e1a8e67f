// SPDX-License-Identifier: MIT
#include <vexagpx/commands/Repair.h>

#include <vexagpx/editing/EditRun.h>
#include <vexagpx/input/FileParser.h>
#include <vexagpx/input/XmlCheck.h>
#include <vexagpx/process/Messages.h>
#include <vexagpx/repair/EncodingRepair.h>
#include <vexagpx/repair/MarkupRepair.h>
#include <vexagpx/terminal/DisplayText.h>

#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>

namespace vexagpx {

namespace {

/// Repairs one file.
class RepairRun {
public:
    RepairRun(const RepairOptions& options, const InputFile& file, ChangeList& changes)
        : options_(options), file_(file), changes_(changes), name_(ShownName(options.edit.in)) {}

    std::string Run() {
        std::string bytes = ReadInput(file_.FilePath());
        // What the entities of a document type mean is only known to the XML parser, which has limits when it reads
        // documents.
        const bool hasDocumentType = bytes.find("<!DOCTYPE") != std::string::npos;
        const bool wasWellFormed = hasDocumentType ? CanBeRead(bytes) : !FindError(bytes);
        if (hasDocumentType && wasWellFormed)
            return bytes;
        RepairedEncoding encoding = RepairEncoding(bytes);
        RepairedMarkup markup = Mended(encoding);
        const bool isNeeded = changes_.Count() != 0 || encoding.wasWrong || !wasWellFormed;
        TellOfRest(markup);
        if (!isNeeded || (changes_.Count() == 0 && encoding.told.empty())) {
            if (!wasWellFormed)
                Check(bytes);
            return bytes;
        }
        for (std::string& what : encoding.told)
            changes_.Add({"encoding", "document", 0, {}, std::move(what), {}});
        Check(markup.text);
        return std::move(markup.text);
    }

private:
    std::optional<std::string> FindError(const std::string& text) const {
        return FindXmlError(text, options_.edit.rules.isTrusted);
    }
    bool CanBeRead(const std::string& bytes) const {
        try {
            vexaTransferLib::GpxDocument document;
            FileParser(options_.edit.rules).ReadBytes(bytes, name_, document);
            return true;
        } catch (const std::runtime_error&) {
            return false;
        }
    }
    RepairedMarkup Mended(const RepairedEncoding& encoding) {
        RepairRules rules;
        std::unique_ptr<icu::TimeZone> zone;
        if (!options_.zone.empty())
            zone.reset(icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(options_.zone)));
        rules.zone = zone.get();
        rules.dropsBadPoints = options_.dropsBadPoints;
        try {
            return RepairMarkup(encoding.text, rules, changes_);
        } catch (const std::runtime_error& failure) {
            throw std::runtime_error(std::string(failure.what()) + " (" + name_ + ")");
        }
    }
    /// \throws std::runtime_error when the document still cannot be read
    void Check(const std::string& text) const {
        if (const auto error = FindError(text))
            throw std::runtime_error("Not all of it could be repaired: " + *error + " (" + name_ + ")");
        vexaTransferLib::GpxDocument document;
        FileParser(options_.edit.rules).ReadBytes(text, name_, document);
    }
    void TellOfRest(const RepairedMarkup& markup) const {
        if (markup.timesWithoutZone != 0)
            PrintError("Note: " + Counted(markup.timesWithoutZone, "time") +
                       " without a zone; --zone Europe/Zurich, for example, gives one. (" + name_ + ")");
        if (markup.badPoints != 0)
            PrintError("Note: " + Counted(markup.badPoints, "point") +
                       " without a place on the earth; --drop-bad-points removes such points. (" + name_ +
                       ")");
    }

    const RepairOptions& options_;
    const InputFile& file_;
    ChangeList& changes_;
    std::string name_;
};

} // namespace

bool Repair(const RepairOptions& options, Output& standardOutput) {
    const auto edit = [&options](const InputFile& file, ChangeList& changes) {
        return RepairRun(options, file, changes).Run();
    };
    return RunByteEdit(options.edit, edit, standardOutput);
}

} // namespace vexagpx
