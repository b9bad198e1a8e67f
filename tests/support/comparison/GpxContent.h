// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vexaTransferLib::testing_support {

/// The start of the path of a fact that gives the order of child elements.
inline constexpr std::string_view kOrderOf = "order of ";

/// A GPX element with everything in it. A fact is a path below the object with its value.
struct GpxObject {
    /// Path, zero byte, value, zero byte, one fact after another.
    std::string facts;
    /// The objects in this one, in their order, by their names.
    std::map<std::string_view, std::vector<GpxObject>> objects;
};

/// Calls the function with the path and the value of every fact.
void ForEachFact(const GpxObject& object,
                 const std::function<void(std::string_view path, std::string_view value)>& function);

struct GpxContent {
    std::string rootName;
    GpxObject root;
};

/// Short names for long paths, so that an element at a depth of a million costs no path of a million steps. The
/// same path has the same name in all texts that one object has seen.
class DeepPaths {
public:
    std::string NameOf(const std::string& path) {
        return "(" + std::to_string(numbers_.try_emplace(path, numbers_.size()).first->second) + ")";
    }

private:
    std::unordered_map<std::string, std::size_t> numbers_;
};

/// The content of a GPX text in a form in which GPX 1.0 and GPX 1.1 do not differ. Throws std::runtime_error when
/// the text is not well-formed.
GpxContent ReadGpxContent(std::string_view text, DeepPaths& deepPaths);

} // namespace vexaTransferLib::testing_support
