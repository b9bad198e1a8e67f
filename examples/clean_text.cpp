// SPDX-License-Identifier: MIT
// Prints the plain text of a file of HTML and BBCode: clean_text FILE
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vexaTransferLib/CleanText.h>

int main(int argc, char** argv) {
    if (argc != 2)
        return 2;
    try {
        std::ifstream file(argv[1]);
        const std::string utf8{std::istreambuf_iterator<char>(file), {}};
        icu::UnicodeString text = icu::UnicodeString::fromUTF8(utf8);

        vexaTransferLib::CleanText cleaner; // cleans any number of texts
        cleaner.CleanWebTextForTova(text);

        std::string clean;
        std::cout << text.toUTF8String(clean);
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
