// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/InputGuard.h>

#include <vexaTransferLib/reader/ReadingStop.h>

#include <common/dbc.h>

#include <exception>

namespace vexaTransferLib::reader {

void InputGuard::RefuseDocumentType() const {
    Refuse("It has a document type declaration.");
}

void InputGuard::RefuseEncoding(const std::string& encoding) const {
    Refuse("Its encoding is read from trusted files only: " + encoding + ".");
}

void InputGuard::RefuseHeadBytes() const {
    Refuse("Its head has more bytes than", limits_.headBytes, "head bytes");
}

void InputGuard::AddNamespace(std::u16string_view prefix, std::u16string_view uri) {
    declarations_.push_back(depth_);
    if (declarations_.size() > limits_.namespaces)
        Refuse("It has more namespace declarations in scope than", limits_.namespaces, "namespaces");
    if (uri.size() > limits_.namespaceLength)
        Refuse("One of its namespaces is longer than", limits_.namespaceLength, "namespace length");
    AddName(prefixes_, prefix);
    AddName(uris_, uri);
}

void InputGuard::EndDeclarations() {
    while (!declarations_.empty() && declarations_.back() == depth_)
        declarations_.pop_back();
}

void InputGuard::AddElementName(std::size_t nameNumber) {
    // Checked first: the numbers have no gaps, so that the limit bounds the table too.
    CountName();
    if (nameNumber >= isKnownName_.size())
        isKnownName_.resize(nameNumber + 1);
    isKnownName_[nameNumber] = true;
}

void InputGuard::AddName(std::set<std::u16string, std::less<>>& names, std::u16string_view name) {
    if (names.find(name) != names.end())
        return;
    CountName();
    names.emplace(name);
}

void InputGuard::CountName() {
    if (++names_ > limits_.names)
        Refuse("It has more different names than", limits_.names, "names");
}

void InputGuard::Refuse(const char* what, std::uint64_t limit, const char* limitName) const {
    Refuse(std::string(what) + " " + std::to_string(limit) + " (limit of " + limitName + ").");
}

void InputGuard::Refuse(const std::string& why) const {
    throw ReadingStop{std::make_exception_ptr(
        dbc::postcondition_error("The untrusted GPX file was refused: " + name_ + ". " + why))};
}

} // namespace vexaTransferLib::reader
