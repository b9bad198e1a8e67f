# Puts the style and the script into the template of the page, with the hashes by which the page's policy allows them and
# nothing else, and writes the result as a C++ source. Run with TEMPLATE, STYLE, SCRIPT (a list of files) and OUTPUT.

# The Base64 text of a SHA-256 in hexadecimal digits: 24 bits become four characters.
function(vexa_base64 hexadecimal result)
    set(alphabet "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/")
    set(text "")
    set(padded "${hexadecimal}00")
    foreach(at RANGE 0 60 6)
        string(SUBSTRING "${padded}" ${at} 6 group)
        foreach(shift 18 12 6 0)
            math(EXPR index "(0x${group} >> ${shift}) & 63")
            string(SUBSTRING "${alphabet}" ${index} 1 character)
            string(APPEND text "${character}")
        endforeach()
    endforeach()
    # The last character comes from the padding alone.
    string(SUBSTRING "${text}" 0 43 text)
    set(${result} "${text}=" PARENT_SCOPE)
endfunction()

file(READ "${TEMPLATE}" page)
foreach(part style script)
    string(TOUPPER ${part} file)
    set(content "")
    foreach(path IN LISTS ${file})
        file(READ "${path}" piece)
        string(REGEX REPLACE "^// SPDX[^\n]*\n" "" piece "${piece}")
        string(APPEND content "${piece}")
    endforeach()
    string(SHA256 hash "${content}")
    vexa_base64("${hash}" hash)
    string(REPLACE "{{${part} hash}}" "${hash}" page "${page}")
    string(REPLACE "{{${part}}}" "${content}" page "${page}")
endforeach()
file(WRITE "${OUTPUT}" "// SPDX-License-Identifier: MIT
#include <vexagpx/page/PageTemplate.h>

namespace vexagpx {

const std::string_view kPageTemplate = R\"vexagpx(${page})vexagpx\";

} // namespace vexagpx
")
