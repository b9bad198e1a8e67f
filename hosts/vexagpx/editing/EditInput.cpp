// SPDX-License-Identifier: MIT
#include <vexagpx/editing/EditInput.h>

#include <vexagpx/input/Archive.h>
#include <vexagpx/input/DocumentReading.h>
#include <vexagpx/input/FileParser.h>
#include <vexagpx/input/FolderFiles.h>

#include <stdexcept>

namespace vexagpx {

InputFile OpenForEditing(const std::string& argument, const InputRules& rules) {
    RefuseFolder(argument);
    InputFile file = OpenDocument(argument, rules.archives);
    if (IsArchive(file))
        throw std::runtime_error("An archive cannot be changed; vexagpx zip extract writes what is in it. (" +
                                 ShownName(argument) + ")");
    return file;
}

vexaTransferLib::GpxDocument ReadForEditing(const std::string& argument, const InputRules& rules) {
    const InputFile file = OpenForEditing(argument, rules);
    vexaTransferLib::GpxDocument document;
    FileParser(rules).ReadFile(file, document);
    return document;
}

} // namespace vexagpx
