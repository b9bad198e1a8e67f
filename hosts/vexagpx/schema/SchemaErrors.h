// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/report/SchemaReport.h>

#include <xercesc/sax/Locator.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>

#include <cstddef>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace vexagpx {

/// Turns the notifications of a validating parser into errors with the element that each is about. The parser names
/// none, tells of an element and its attributes before the element starts, and of its content when it ends.
class SchemaErrors final : public xercesc::DefaultHandler {
public:
    /// An element of one of these namespaces, or of none, that no schema declares has no place where it stands; one of
    /// another namespace has no schema, where elements of other programs may be.
    void SetNamespaces(std::set<std::string> namespaces) { namespaces_ = std::move(namespaces); }

    /// Another document begins.
    void Begin(SchemaReport& report);

    /// The next element is validated; it has not started yet.
    void StartsNext() { isBeforeStart_ = true; }
    /// The content of an element is validated: of the next one if it is empty and has not started yet.
    void BeginContent() { isInContent_ = true; }
    /// \param failed the number of the child that is not allowed; of no child when all are
    void EndContent(std::size_t failed);

    void setDocumentLocator(const xercesc::Locator* locator) override { locator_ = locator; }
    void startElement(const XMLCh* nameSpace, const XMLCh* name, const XMLCh* qualifiedName,
                      const xercesc::Attributes& attributes) override;
    void endElement(const XMLCh* nameSpace, const XMLCh* name, const XMLCh* qualifiedName) override;
    void error(const xercesc::SAXParseException& exception) override;
    void fatalError(const xercesc::SAXParseException&) override {}
    void warning(const xercesc::SAXParseException&) override {}
    void resetErrors() override {}

private:
    struct Child {
        Location location; ///< where it starts
        bool isReported;   ///< as one that is not declared
    };
    struct Level {
        std::string name;
        std::vector<Child> children;
        bool takesOthers = false; ///< elements of other programs, if their schema is known
        bool hasNoSchema = false; ///< the element or one around it
    };
    struct Waiting {
        SchemaErrorKind kind;
        std::string message;
        Location location;
    };

    std::string Path(const std::string& child) const;
    bool AddWaiting(const std::string& nameSpace);
    void AddChildError(const std::string& message, const Location& atEnd);
    void Add(SchemaErrorKind kind, std::string message, const Location& location);
    Location Here() const;

    std::set<std::string> namespaces_;
    SchemaReport* report_ = nullptr;
    const xercesc::Locator* locator_ = nullptr;
    std::vector<Level> levels_;
    std::size_t depth_ = 0;        ///< of `levels_`, which keeps the memory of those that have ended
    std::vector<Waiting> waiting_; ///< errors of the next element
    bool isBeforeStart_ = false;
    bool isInContent_ = false;
    std::size_t failedChild_ = 0;
};

} // namespace vexagpx
