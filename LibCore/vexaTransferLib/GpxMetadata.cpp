// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxMetadata.h>

#include <vexaTransferLib/GpxExtensions.h>
#include <vexaTransferLib/model/ElementFields.h>
#include <vexaTransferLib/text/ElementNames.h>

#include <iterator>

namespace vexaTransferLib {

namespace {

GpxElement MetadataOf(const GpxElement& root) {
    return FindGpxChild(root, gpx::kMetadata);
}

// In metadata or, when it is not there, in the root.
template <class Find>
GpxElement FindInBoth(const GpxElement& root, Find find, const text::ElementName& name) {
    GpxElement found = find(MetadataOf(root), name);
    return found ? found : find(root, name);
}

GpxElement FindField(const GpxElement& root, const text::ElementName& name) {
    return FindInBoth(root, FindGpxChild, name);
}

GpxElement FindVendorField(const GpxElement& root, const text::ElementName& name) {
    return FindInBoth(root, FindVendorElement, name);
}

template <class Value>
std::vector<Value> Joined(std::vector<Value> first, std::vector<Value> second) {
    first.insert(first.end(), std::make_move_iterator(second.begin()), std::make_move_iterator(second.end()));
    return first;
}

// GPX 1.1 has its two halves in attributes, 1.0 has it as text.
std::optional<icu::UnicodeString> EmailOf(const GpxElement& email) {
    const std::optional<icu::UnicodeString> id = TextOf(email, gpx::kId);
    const std::optional<icu::UnicodeString> domain = TextOf(email, gpx::kDomain);
    if (id && domain)
        return *id + u"@" + *domain;
    return id || domain ? std::nullopt : TextOf(email);
}

GpxPerson PersonOf(const GpxElement& author) {
    GpxPerson person;
    if (author.GetChildren().empty()) {
        person.name = TextOf(author);
        return person;
    }
    person.name = TextOf(FindGpxChild(author, gpx::kName));
    person.email = EmailOf(FindGpxChild(author, gpx::kEmail));
    if (const GpxElement link = FindGpxChild(author, gpx::kLink))
        person.link = LinkOf(link);
    return person;
}

std::optional<std::int32_t> CountIn(const GpxElement& stats, const text::ElementName& name) {
    return VendorIntegerOf(FindTarvikChild(stats, name));
}

} // namespace

std::optional<icu::UnicodeString> GpxMetadata::GetVersion() const {
    return TextOf(root_, gpx::kVersion);
}

std::optional<icu::UnicodeString> GpxMetadata::GetCreator() const {
    return TextOf(root_, gpx::kCreator);
}

std::optional<icu::UnicodeString> GpxMetadata::GetName() const {
    return TextOf(FindField(root_, gpx::kName));
}

std::optional<icu::UnicodeString> GpxMetadata::GetDescription() const {
    return TextOf(FindField(root_, gpx::kDesc));
}

std::optional<icu::UnicodeString> GpxMetadata::GetKeywords() const {
    return TextOf(FindField(root_, gpx::kKeywords));
}

std::optional<GpxPerson> GpxMetadata::GetAuthor() const {
    if (const GpxElement author = FindGpxChild(MetadataOf(root_), gpx::kAuthor))
        return PersonOf(author);
    const GpxElement author = FindGpxChild(root_, gpx::kAuthor);
    const GpxElement email = FindGpxChild(root_, gpx::kEmail);
    if (!author && !email)
        return std::nullopt;
    GpxPerson person = PersonOf(author);
    if (!person.email)
        person.email = EmailOf(email);
    return person;
}

std::optional<GpxCopyright> GpxMetadata::GetCopyright() const {
    const GpxElement copyright = FindField(root_, gpx::kCopyright);
    if (!copyright)
        return std::nullopt;
    return GpxCopyright{TextOf(copyright, gpx::kAuthor), TextOf(FindGpxChild(copyright, gpx::kYear)),
                        TextOf(FindGpxChild(copyright, gpx::kLicense))};
}

std::vector<GpxLink> GpxMetadata::GetLinks() const {
    return Joined(LinksOf(MetadataOf(root_)), LinksOf(root_));
}

std::optional<GpxBounds> GpxMetadata::GetBounds() const {
    const GpxElement bounds = FindField(root_, gpx::kBounds);
    const std::optional<double> minLatitude = NumberOf(bounds, gpx::kMinlat);
    const std::optional<double> minLongitude = NumberOf(bounds, gpx::kMinlon);
    const std::optional<double> maxLatitude = NumberOf(bounds, gpx::kMaxlat);
    const std::optional<double> maxLongitude = NumberOf(bounds, gpx::kMaxlon);
    if (!minLatitude || !minLongitude || !maxLatitude || !maxLongitude)
        return std::nullopt;
    return GpxBounds{*minLatitude, *minLongitude, *maxLatitude, *maxLongitude};
}

std::optional<double> GpxMetadata::GetTime() const {
    return FindField(root_, gpx::kTime).GetTime();
}

std::optional<icu::UnicodeString> GpxMetadata::GetLayerName() const {
    return TextOf(FindVendorField(root_, tarvik::kLayername));
}

std::optional<icu::UnicodeString> GpxMetadata::GetLayerKey() const {
    return TextOf(FindVendorField(root_, tarvik::kLayerkey));
}

std::optional<icu::UnicodeString> GpxMetadata::GetForm() const {
    return TextOf(FindVendorField(root_, tarvik::kForm));
}

std::optional<std::int32_t> GpxMetadata::GetDefaultSymbol() const {
    return VendorIntegerOf(FindVendorField(root_, tarvik::kDefaultsymbol));
}

std::optional<icu::UnicodeString> GpxMetadata::GetTrackIdentifier() const {
    return TextOf(FindVendorField(root_, tarvik::kTrackGUID));
}

std::optional<icu::UnicodeString> GpxMetadata::GetWaypointIdentifier() const {
    return TextOf(FindVendorField(root_, tarvik::kWaypointGUID));
}

std::optional<GpxFileStats> GpxMetadata::GetFileStats() const {
    const GpxElement stats = FindVendorField(root_, tarvik::kFilestats);
    if (!stats)
        return std::nullopt;
    GpxFileStats counts;
    counts.waypoints = CountIn(stats, tarvik::kWptcount);
    counts.tracks = CountIn(stats, tarvik::kTrkcount);
    counts.trackSegments = CountIn(stats, tarvik::kTrksegcount);
    counts.geocaches = CountIn(stats, tarvik::kGeocachecount);
    if (!counts.geocaches)
        counts.geocaches = CountIn(stats, tarvik::kGeocachesymbolcount);
    counts.trackLength = VendorNumberOf(FindTarvikChild(stats, tarvik::kTrktotalkm));
    return counts;
}

std::vector<GpxElement> GpxMetadata::GetExtensions() const {
    return Joined(ForeignElements(MetadataOf(root_)), ForeignElements(root_));
}

} // namespace vexaTransferLib
