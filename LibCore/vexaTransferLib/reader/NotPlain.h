// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

namespace vexaTransferLib::reader {

/// Why a file is not a plain one.
enum class NotPlain {
    kIsPlain,
    kDeclaration,  ///< an XML declaration with another encoding or version, or in an unusual form
    kDocumentType, ///< a document type declaration
    kName,         ///< a name with other characters than those of ASCII
    kNamespace,    ///< a prefix, a declaration or an attribute's name that is not certain to be right
    kLimit,        ///< more than the limits of an untrusted file allow, or than files have
    kOther         ///< ill-formed, or perhaps so
};

} // namespace vexaTransferLib::reader
