// SPDX-License-Identifier: MIT
#pragma once

#include <cstdio>
#include <fstream>
#include <stdexcept>
#include <string>

#include <unistd.h>

namespace bench {

/// A file with these bytes in the current folder, which exists as long as this object.
class File {
public:
    File(const std::string& name, const std::string& bytes)
        : path_("bench-" + std::to_string(::getpid()) + "-" + name) {
        std::ofstream file(path_, std::ios::binary);
        if (!file.write(bytes.data(), static_cast<std::streamsize>(bytes.size())).flush())
            throw std::runtime_error("Unable to write " + path_);
    }
    ~File() { std::remove(path_.c_str()); }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    const std::string& Path() const { return path_; }

private:
    std::string path_;
};

/// A GPX 1.1 file with the vendor's metadata block and the given number of waypoints, of about 100 bytes
/// each.
inline std::string WaypointFile(int waypoints) {
    std::string text =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<gpx version=\"1.1\" creator=\"bench\" xmlns=\"http://www.topografix.com/GPX/1/1\" "
        "xmlns:tarvik=\"https://tarvik.example/xmlschemas/gpx-extensions/1/0\"><metadata>"
        "<time>2025-06-14T15:10:00Z</time><extensions><tarvik:layername>Day walks"
        "</tarvik:layername><tarvik:wptcount>1,000</tarvik:wptcount></extensions></metadata>\n";
    for (int i = 0; i < waypoints; ++i) {
        const std::string number = std::to_string(1000000 + i);
        text += "<wpt lat=\"46." + number + "\" lon=\"7." + number + "\"><ele>" + std::to_string(i % 3000) +
                ".5</ele><name>W" + number + "</name></wpt>\n";
    }
    return text + "</gpx>\n";
}

} // namespace bench
