// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/InputLimiter.h>

namespace vexaTransferLib::reader {

void InputLimiter::RefuseDocumentType() const {
    RefuseUntrusted(GpxReadErrorKind::kUntrusted, name_, "It has a document type declaration.");
}

void InputLimiter::RefuseEncoding(const std::string& encoding) const {
    RefuseUntrusted(GpxReadErrorKind::kUntrusted, name_,
                    "Its encoding is read from trusted files only: " + encoding + ".");
}

void InputLimiter::RefuseHeadBytes() const {
    Refuse("Its head has more bytes than", limits_.headBytes, "head bytes");
}

void InputLimiter::AddNamespace(std::u16string_view prefix, std::u16string_view uri) {
    declarations_.push_back(depth_);
    if (declarations_.size() > limits_.namespaces)
        Refuse("It has more namespace declarations in scope than", limits_.namespaces, "namespaces");
    if (uri.size() > limits_.namespaceLength)
        Refuse("One of its namespaces is longer than", limits_.namespaceLength, "namespace length");
    AddName(prefixes_, prefix);
    AddName(uris_, uri);
}

void InputLimiter::EndDeclarations() {
    while (!declarations_.empty() && declarations_.back() == depth_)
        declarations_.pop_back();
}

void InputLimiter::AddElementName(std::size_t nameNumber) {
    // Checked first: the numbers have no gaps, so that the limit bounds the table too.
    CountName();
    if (nameNumber >= isKnownName_.size())
        isKnownName_.resize(nameNumber + 1);
    isKnownName_[nameNumber] = true;
}

void InputLimiter::AddName(std::set<std::u16string, std::less<>>& names, std::u16string_view name) {
    if (names.find(name) != names.end())
        return;
    CountName();
    names.emplace(name);
}

void InputLimiter::CountName() {
    if (++names_ > limits_.names)
        Refuse("It has more different names than", limits_.names, "names");
}

} // namespace vexaTransferLib::reader
