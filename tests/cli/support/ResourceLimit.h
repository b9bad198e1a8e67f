// SPDX-License-Identifier: MIT
#pragma once

#include <sys/resource.h>

namespace cli {

/// Sets the soft limit of a resource while it exists, for this process and those that it starts.
class ResourceLimit {
public:
    ResourceLimit(__rlimit_resource_t resource, rlim_t most) : resource_(resource) {
        ::getrlimit(resource, &before_);
        const rlimit limit{most, before_.rlim_max};
        ::setrlimit(resource, &limit);
    }
    ~ResourceLimit() { ::setrlimit(resource_, &before_); }
    ResourceLimit(const ResourceLimit&) = delete;
    ResourceLimit& operator=(const ResourceLimit&) = delete;

private:
    __rlimit_resource_t resource_;
    rlimit before_{};
};

} // namespace cli
