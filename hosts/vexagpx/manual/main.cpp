// SPDX-License-Identifier: MIT

// Writes the tool's manual page or one of its completions, depending on the name of the file.
//   vexagpx_manual OUTPUT TEMPLATE EXAMPLES

#include <vexagpx/CommandLine.h>
#include <vexagpx/manual/Writers.h>

#include <CLI/CLI.hpp>

#include <exception>
#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace {

using namespace vexagpx::manual;

std::string Content(const std::string& path) {
    std::ifstream file(path);
    std::string content{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    if (!file || content.empty())
        throw std::runtime_error("cannot read " + path);
    return content;
}

std::string Written(const std::string& name, const std::string& templatePath,
                    const std::string& examplesPath) {
    CLI::App app;
    vexagpx::Invocation invocation;
    vexagpx::AddCommands(app, invocation);
    const Command tool = Describe(app);
    if (name == "vexagpx.1")
        return ManualPage(tool, Content(templatePath), Content(examplesPath));
    if (name == "vexagpx.bash")
        return BashCompletion(tool);
    if (name == "_vexagpx")
        return ZshCompletion(tool);
    if (name == "vexagpx.fish")
        return FishCompletion(tool);
    throw std::runtime_error("no output is called " + name);
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 4)
        return 2;
    try {
        const std::string text = Written(argv[1], argv[2], argv[3]);
        std::ofstream file(argv[1]);
        file << text;
        file.close();
        if (!file)
            throw std::runtime_error(std::string("cannot write ") + argv[1]);
    } catch (const std::exception& error) {
        std::cerr << "vexagpx_manual: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
