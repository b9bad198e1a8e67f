// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/InputName.h>

#include <vexaTransferLib/text/IcuText.h>
#include <vexaTransferLib/text/OptionalText.h>

#include <common/UnicodeStrUtils.h>

#include <cstdint>

namespace vexaTransferLib::reader {

// A bogus name, for which ICU had no memory, is empty.
InputName::InputName(const icu::UnicodeString& text) : text_(text::Copied(text)) {
    if (!text_.isBogus())
        bytes_ = UnicodeStrUtils::UnicodeStringToStlString(text_);
}

icu::UnicodeString DefaultDocumentName(const InputName& name) {
    icu::UnicodeString document(name.Text());
    const std::int32_t slash = document.lastIndexOf(u'/');
    if (slash >= 0)
        document.remove(0, slash + 1);
    const std::int32_t dot = document.lastIndexOf(u'.');
    if (dot >= 0)
        document.truncate(dot);
    text::ThrowIfBogus(document);
    return document;
}

} // namespace vexaTransferLib::reader
