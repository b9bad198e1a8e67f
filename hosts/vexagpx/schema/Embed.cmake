# Writes the schemas as a C++ source. Run with VERSIONS (the schemas of GPX), GEOCACHE, VENDOR and OUTPUT.

# A literal with a delimiter that no schema contains.
function(vexa_literal text result)
    set(${result} "    std::string_view(R\"vexagpx(${text})vexagpx\"),\n" PARENT_SCOPE)
endfunction()

set(literals "")
foreach(file IN LISTS VERSIONS VENDOR)
    file(READ "${file}" text)
    vexa_literal("${text}" literal)
    string(APPEND literals "${literal}")
endforeach()

# Version 1/0/1 of geocaches also tells whether they have an attribute or lack it.
file(READ "${GEOCACHE}" geocache)
set(VERSION "1/0")
set(INCLUDED "")
string(CONFIGURE "${geocache}" text @ONLY)
vexa_literal("${text}" literal)
string(APPEND literals "${literal}")
set(VERSION "1/0/1")
set(INCLUDED "        <xs:attribute name=\"inc\" type=\"xs:byte\"/>\n")
string(CONFIGURE "${geocache}" text @ONLY)
vexa_literal("${text}" literal)
string(APPEND literals "${literal}")

file(WRITE "${OUTPUT}" "// SPDX-License-Identifier: MIT
#include <vexagpx/schema/SchemaTexts.h>

namespace vexagpx {

const std::array<std::string_view, 5> kSchemaTexts = {
${literals}};

} // namespace vexagpx
")
