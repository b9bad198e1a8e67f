// SPDX-License-Identifier: MIT
#include <vexagpx/commands/Repair.h>

#include <vexagpx/editing/EditRun.h>
#include <vexagpx/input/FileParser.h>
#include <vexagpx/input/XmlCheck.h>
#include <vexagpx/repair/EncodingRepair.h>
#include <vexagpx/repair/MarkupRepair.h>

#include <stdexcept>
#include <string>

namespace vexagpx {

namespace {

bool CanBeRead(const InputRules& rules, const InputFile& file) {
    try {
        vexaTransferLib::GpxDocument document;
        FileParser(rules).ReadFile(file, document);
        return true;
    } catch (const std::runtime_error&) {
        return false;
    }
}

std::string Repaired(const RepairOptions& options, const InputFile& file, ChangeList& changes) {
    std::string bytes = ReadInput(file.FilePath());
    if (CanBeRead(options.edit.rules, file))
        return bytes;
    const std::string name = ShownName(options.edit.in);
    std::string mended;
    try {
        mended = RepairMarkup(RepairEncoding(std::move(bytes), changes), changes);
    } catch (const std::runtime_error& failure) {
        throw std::runtime_error(std::string(failure.what()) + " (" + name + ")");
    }
    if (const auto error = FindXmlError(mended))
        throw std::runtime_error("Not all of it could be repaired: " + *error + " (" + name + ")");
    vexaTransferLib::GpxDocument document;
    FileParser(options.edit.rules).ReadBytes(mended, name, document);
    return mended;
}

} // namespace

bool Repair(const RepairOptions& options, Output& standardOutput) {
    const auto edit = [&options](const InputFile& file, ChangeList& changes) {
        return Repaired(options, file, changes);
    };
    return RunByteEdit(options.edit, edit, standardOutput);
}

} // namespace vexagpx
