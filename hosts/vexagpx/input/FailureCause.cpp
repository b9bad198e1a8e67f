// SPDX-License-Identifier: MIT
#include <vexagpx/input/FailureCause.h>

#include <algorithm>
#include <iterator>

namespace vexagpx {

namespace {

/// What the message of a failure contains.
struct Failure {
    std::string_view part;
    Cause cause;
};

// The first one whose part is in the message counts.
constexpr Failure kFailures[] = {
    {"input ended before all started tags",
     {"cut-off", "The file is cut off.", "Get it again from where it comes; its end is missing."}},
    {"unexpected end of input",
     {"cut-off", "The file is cut off.", "Get it again from where it comes; its end is missing."}},
    {"can not be resolved to namespace URI",
     {"undeclared-prefix", "A prefix of an element is not declared.",
      "Add xmlns:PREFIX=\"...\" to the gpx element, with the address that the program's files have."}},
    {"comment or processing instruction expected",
     {"more-after-the-end", "Something follows the end of the document.",
      "Keep what comes up to the first </gpx>; a second document goes into a file of its own."}},
    {"declaration must start at line 1",
     {"late-declaration", "Something comes before the XML declaration.",
      "Remove what stands before <?xml, also blanks and empty lines."}},
    {"expected end of tag",
     {"mismatched-tags", "Start and end tags do not match.",
      "Correct the tag in the line that is named, or write the file again."}},
    {"byte",
     {"wrong-encoding", "Bytes are not in the encoding that the file states.",
      "State the encoding in which it is, such as encoding=\"windows-1252\", or write it in UTF-8."}},
    {"invalid document structure",
     {"no-xml", "The file is not XML.", "Look where it comes from for the GPX file."}},
    {"Unable to read the GPX version",
     {"no-version", "The file does not state its version.", "Add version=\"1.1\" to the gpx element."}},
    {"Unsupported GPX version",
     {"other-version", "The file has a version that GPX does not have.",
      "Write version=\"1.1\" or \"1.0\" in the gpx element, as its namespace says."}},
    {"document element was not found",
     {"other-root", "The file is XML, but not GPX.", "Export it as GPX from the program that made it."}},
    {"latitude",
     {"bad-position", "A point has no position that can be read.",
      "Remove the point, or correct its lat and lon."}},
    {"longitude",
     {"bad-position", "A point has no position that can be read.",
      "Remove the point, or correct its lat and lon."}},
    {"holds no GPX file", {"no-entry", "An archive has no GPX file.", "vexagpx zip list tells what it has."}},
    {"ZIP for reading", {"bad-archive", "An archive is damaged.", "Get it again from where it comes."}},
    {" is empty", {"empty", "The file is empty.", "Get it again from where it comes."}},
    {", not ",
     {"other-format", "The file has another format.",
      "Export or convert it to GPX with the program that made it."}},
    {"document type",
     {"document-type", "The file has a document type.", "Use --trust if you trust where it comes from."}},
    {"limit",
     {"limit", "The file is beyond the limits for strangers' files.",
      "Use --trust, or the --max options, if you trust where it comes from."}},
    {"parsing the GPX file",
     {"not-well-formed", "The file is not well-formed XML.",
      "Correct it in the line that is named, or write it again."}},
    {"open", {"not-opened", "The file cannot be opened.", "Check its name and its permissions."}},
    {"", {"other", "Something else is wrong.", "vexagpx check FILE says more."}},
};

} // namespace

const Cause& FailureCause(std::string_view message) {
    return std::find_if(
               std::begin(kFailures), std::end(kFailures),
               [&](const Failure& failure) { return message.find(failure.part) != std::string_view::npos; })
        ->cause;
}

std::string FailureAdvice(std::string_view message) {
    const Cause& cause = FailureCause(message);
    return &cause == &std::end(kFailures)[-1].cause ? std::string() : " " + std::string(cause.advice);
}

bool IsFailureOfContent(std::string_view message) {
    constexpr std::string_view kWords[] = {"no-version", "other-version", "other-root", "bad-position"};
    return std::find(std::begin(kWords), std::end(kWords), FailureCause(message).word) != std::end(kWords);
}

} // namespace vexagpx
