// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/input/Input.h>
#include <vexagpx/report/SchemaReport.h>
#include <vexagpx/schema/SchemaChecker.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace vexagpx {

/// Checks the documents of the command line by their schemas, shows the progress, and stops at signals with a message.
class DocumentValidation {
public:
    /// \throws std::runtime_error when the file cannot be read
    void ValidateFile(const InputFile& file, SchemaReport& report);
    /// \param name used in messages instead of the path of a file
    void ValidateBytes(std::string_view bytes, const std::string& name, SchemaReport& report);

private:
    void Validate(const std::string& name, std::uint64_t size, const CallbackInputSource::Read& read,
                  SchemaReport& report);

    SchemaChecker checker_;
};

} // namespace vexagpx
