// SPDX-License-Identifier: MIT
#include "support/ChildProcess.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <exception>
#include <system_error>

namespace vexaTransferLib::testing_support {

int InChild(const std::function<int()>& run) {
    const pid_t child = ::fork();
    if (child == 0) {
        try {
            ::_exit(run());
        } catch (const std::exception&) {
            ::_exit(99);
        }
    }
    int status = 0;
    if (child < 0 || ::waitpid(child, &status, 0) != child)
        throw std::system_error(errno, std::generic_category(), "a child process");
    return status;
}

} // namespace vexaTransferLib::testing_support
