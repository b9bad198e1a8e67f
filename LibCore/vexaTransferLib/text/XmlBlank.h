// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

namespace vexaTransferLib::text {

/// True for the white space of XML. Most bytes of a file are beyond all of it.
inline bool IsBlank(char byte) {
    return static_cast<unsigned char>(byte) <= ' ' &&
           (byte == ' ' || byte == '\n' || byte == '\r' || byte == '\t');
}

} // namespace vexaTransferLib::text
