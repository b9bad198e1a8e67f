// SPDX-License-Identifier: MIT
#pragma once

#include <xercesc/sax/InputSource.hpp>

#include <cstddef>
#include <exception>
#include <functional>
#include <string>

namespace vexagpx {

/// Gives the XML parser its bytes by calling a function, as many as it asks for. Serves one parse.
class CallbackInputSource final : public xercesc::InputSource {
public:
    /// Reads the next bytes into a buffer of this size; returns 0 at the end. May throw.
    using Read = std::function<std::size_t(char*, std::size_t)>;

    /// \param path against which the parser resolves relative names of other files
    CallbackInputSource(const std::string& path, Read read);

    xercesc::BinInputStream* makeStream() const override;

    /// Throws what `read` threw, which did not pass through the XML parser.
    void RethrowFailure() const;

private:
    Read read_;
    mutable std::exception_ptr failure_;
};

} // namespace vexagpx
