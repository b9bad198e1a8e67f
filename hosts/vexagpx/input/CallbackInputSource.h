// SPDX-License-Identifier: MIT
#pragma once

#include <xercesc/sax/InputSource.hpp>

#include <cstddef>
#include <exception>
#include <functional>
#include <string>

namespace vexagpx {

/// Lets the XML parser read from anywhere, as far as it wants to. Serves one parse.
class CallbackInputSource final : public xercesc::InputSource {
public:
    /// The next bytes into a buffer of that size; 0 at the end. May throw.
    using Read = std::function<std::size_t(char*, std::size_t)>;

    /// \param path against which the parser resolves relative names of other files
    CallbackInputSource(const std::string& path, Read read);

    xercesc::BinInputStream* makeStream() const override;

    /// Throws what `read` threw, which the XML parser's caller may have swallowed.
    void RethrowFailure() const;

private:
    Read read_;
    mutable std::exception_ptr failure_;
};

} // namespace vexagpx
