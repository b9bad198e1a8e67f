// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/input/CallbackInputSource.h>
#include <vexagpx/report/SchemaReport.h>

#include <memory>
#include <string>

namespace vexagpx {

/// Checks documents by the schemas of GPX, of geocaches and of the vendor, without any other file. Elements of other
/// programs are not checked, but GPX 1.0 asks for their schema.
class SchemaChecker {
public:
    /// Reads the schemas, which takes a few milliseconds.
    SchemaChecker();
    ~SchemaChecker();
    SchemaChecker(const SchemaChecker&) = delete;
    SchemaChecker& operator=(const SchemaChecker&) = delete;

    /// Checks a document that has been read: what is not well-formed is not reported again. The memory that it takes
    /// grows with the number of elements in one element.
    /// \param path of the document
    /// \throws what `read` throws
    void Check(const std::string& path, const CallbackInputSource::Read& read, SchemaReport& report);

private:
    class Parser;
    std::unique_ptr<Parser> parser_;
};

} // namespace vexagpx
