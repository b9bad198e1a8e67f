// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/input/InputRules.h>
#include <vexagpx/picture/PictureLayout.h>
#include <vexagpx/process/Output.h>

#include <string>
#include <vector>

namespace vexagpx {

struct PlotOptions {
    std::vector<std::string> files;
    std::string out;        ///< its ending says what is written
    PictureOptions picture; ///< for all but pages
    InputRules rules;
};

/// Says what is wrong with the name of a file to draw to: its ending. Nothing for a good name.
std::string FindPlotNameError(const std::string& path);

/// Reads "1000x800" into the options. Says what is wrong with it, or nothing.
std::string ReadPictureSize(const std::string& text, PictureOptions& picture);

/// The `plot` command: draws the documents of all files as one picture, or as a page of HTML. False after a failure,
/// which has been reported. A file that cannot be read is left out. Nothing is written without any document, and no
/// picture without any point.
bool Plot(const PlotOptions& options, Output& standardOutput);

} // namespace vexagpx
