// SPDX-License-Identifier: MIT
#include <vexagpx/schema/DocumentValidation.h>

#include <vexagpx/process/Messages.h>
#include <vexagpx/process/Posix.h>
#include <vexagpx/process/Signals.h>
#include <vexagpx/terminal/ProgressBar.h>

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace vexagpx {

void DocumentValidation::ValidateFile(const InputFile& file, SchemaReport& report) {
    const Descriptor descriptor = OpenInput(file.FilePath(), file.Argument());
    std::error_code ignored;
    const std::uintmax_t size = std::filesystem::file_size(file.FilePath(), ignored);
    Validate(
        file.Argument(), ignored ? 0 : size,
        [&](char* buffer, std::size_t capacity) {
            return ReadPiece(descriptor, file.Argument(), buffer, capacity);
        },
        report);
}

void DocumentValidation::ValidateBytes(std::string_view bytes, const std::string& name,
                                       SchemaReport& report) {
    Validate(
        name, bytes.size(),
        [&](char* buffer, std::size_t capacity) {
            const std::size_t count = std::min(capacity, bytes.size());
            std::copy_n(bytes.data(), count, buffer);
            bytes.remove_prefix(count);
            return count;
        },
        report);
}

void DocumentValidation::Validate(const std::string& name, std::uint64_t size,
                                  const CallbackInputSource::Read& read, SchemaReport& report) {
    const FatalSignalMessage message(CancelledMessage(name));
    ProgressBar bar(ShownName(name));
    std::uint64_t done = 0;
    checker_.Check(
        name,
        [&](char* buffer, std::size_t capacity) {
            const std::size_t count = read(buffer, capacity);
            done += count;
            bar.Update({done, size});
            return count;
        },
        report);
}

} // namespace vexagpx
