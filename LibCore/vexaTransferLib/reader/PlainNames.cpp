// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/PlainNames.h>

#include <vexaTransferLib/reader/KnownNames.h>

#include <algorithm>
#include <bit>

namespace vexaTransferLib::reader {

namespace {

constexpr std::string_view kXml = "xml";
constexpr std::string_view kXmlns = "xmlns";
constexpr std::u16string_view kXmlUri = u"http://www.w3.org/XML/1998/namespace";
// These two namespaces cannot be declared.
constexpr std::string_view kReservedUris[] = {"http://www.w3.org/XML/1998/namespace",
                                              "http://www.w3.org/2000/xmlns/"};
// More than files have, and few enough to search one after the other.
constexpr std::uint64_t kMostInScope = 64;
constexpr std::uint64_t kMostNames = 512;

std::size_t LocalStart(std::string_view name) {
    const std::size_t colon = name.find(':');
    return colon == std::string_view::npos ? 0 : colon + 1;
}

std::string_view PrefixOf(std::string_view name) {
    const std::size_t start = LocalStart(name);
    return start == 0 ? std::string_view() : name.substr(0, start - 1);
}

} // namespace

constexpr std::array<std::uint64_t, 9> kNameMasks = [] {
    std::array<std::uint64_t, 9> masks{};
    for (std::size_t length = 0; length < masks.size(); ++length) {
        std::array<unsigned char, 8> bytes{};
        std::fill_n(bytes.begin(), length, static_cast<unsigned char>(0xFF));
        masks[length] = std::bit_cast<std::uint64_t>(bytes);
    }
    return masks;
}();
const std::array<std::uint64_t, 9> PlainNames::kMasks = kNameMasks;

PlainName::PlainName(std::string_view name)
    : bytes_(name), wide_(name.begin(), name.end()), localStart_(LocalStart(name)),
      local_(KnownName(wide_.c_str() + localStart_)),
      isDeclaration_(name == kXmlns || PrefixOf(name) == kXmlns), isSpecial_(isDeclaration_ || HasPrefix()) {}

PlainNames::PlainNames(std::uint64_t mostNames, std::uint64_t mostInScope, std::uint64_t longestUri)
    : mostNames_(std::min(mostNames, kMostNames)), mostInScope_(std::min(mostInScope, kMostInScope)),
      longestUri_(longestUri), prefixes_({std::string(), std::string(kXml)}) {}

bool PlainNames::CountName() {
    return ++count_ <= mostNames_;
}

const std::string* PlainNames::KnownPrefix(std::string_view prefix) const {
    const auto found = prefixes_.find(prefix);
    return found != prefixes_.end() ? &*found : nullptr;
}

PlainName* PlainNames::FindSlowly(std::string_view name, std::uint64_t key) {
    auto found = names_.find(name);
    if (found == names_.end()) {
        if (!CountName())
            return nullptr;
        found = names_.emplace(name, std::make_unique<PlainName>(name)).first;
        found->second->key_ = key;
        found->second->mask_ = MaskOf(name.size());
    }
    return recent_[SlotOf(key)] = found->second.get();
}

bool PlainNames::Declare(const PlainName& name, std::string_view uri) {
    const std::string_view prefix =
        name.HasPrefix() ? name.Bytes().substr(kXmlns.size() + 1) : std::string_view();
    const bool isReserved =
        prefix == kXml || prefix == kXmlns ||
        std::find(std::begin(kReservedUris), std::end(kReservedUris), uri) != std::end(kReservedUris);
    if (isReserved || (name.HasPrefix() && uri.empty()) || uri.size() > longestUri_ ||
        scope_.size() >= mostInScope_)
        return false;
    auto knownPrefix = prefixes_.find(prefix);
    if (knownPrefix == prefixes_.end()) {
        if (!CountName())
            return false;
        knownPrefix = prefixes_.emplace(prefix).first;
    }
    auto knownUri = uris_.find(uri);
    if (knownUri == uris_.end()) {
        if (!CountName())
            return false;
        knownUri = uris_.emplace(uri, std::u16string(uri.begin(), uri.end())).first;
    }
    scope_.push_back({&*knownPrefix, uri.empty() ? nullptr : KnownNamespace(knownUri->second.c_str())});
    ++scopeNumber_;
    return true;
}

void PlainNames::EndDeclarations(std::size_t count) {
    scope_.resize(count);
    ++scopeNumber_;
}

// A name is often found before its prefix is declared: on the element that declares it.
bool PlainNames::Search(const PlainName& name) const {
    if (name.prefix_ == nullptr)
        name.prefix_ = KnownPrefix(PrefixOf(name.Bytes()));
    const auto declared = std::find_if(scope_.rbegin(), scope_.rend(), [&](const Declaration& declaration) {
        return declaration.prefix == name.prefix_;
    });
    if (declared != scope_.rend())
        name.uri_ = declared->uri;
    else if (!name.HasPrefix())
        name.uri_ = nullptr;
    else if (PrefixOf(name.Bytes()) == kXml)
        name.uri_ = kXmlUri.data();
    else
        return false;
    name.scope_ = scopeNumber_;
    return true;
}

} // namespace vexaTransferLib::reader
