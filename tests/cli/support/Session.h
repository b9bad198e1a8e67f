// SPDX-License-Identifier: MIT
#pragma once

#include "support/Tool.h"

#include <chrono>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include <sys/types.h>

namespace cli {

/// Base of tests in a terminal, which are skipped when none can be created, for example without /dev/pts.
class TerminalTest : public testing::Test {
protected:
    void SetUp() override;
};

/// A run of vexagpx that continues while the test examines it. Its standard input and error are a terminal,
/// its standard output a file.
class Session {
public:
    explicit Session(std::vector<std::string> arguments);
    /// Ends a run that has not ended.
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    Session& In(const std::string& folder);
    Session& Set(const std::string& name, const std::string& value);
    Session& Columns(unsigned short columns);
    /// Makes the standard output the terminal too.
    Session& OutToTerminal();
    /// Starts it as a job in the background of the terminal.
    Session& InBackground();
    Session& Ignoring(int signal);
    Session& Start();

    /// Waits until the condition holds. False when it does not within a minute, or the run has ended before.
    bool Until(const std::function<bool()>& condition);
    /// Lets the run continue in small steps, with a pause after each, until the condition holds in a pause.
    bool StepUntil(const std::function<bool()>& condition,
                   std::chrono::milliseconds pause = std::chrono::milliseconds(40));
    /// Waits for the end.
    void Finish();

    void Type(const std::string& keys) const;
    void Send(int signal) const;
    /// The same, and waits until the run has received it.
    void SendAndWait(int signal);
    void Stop();
    void Continue() const;

    /// The text that was written to the terminal so far.
    const std::string& Screen() const { return screen_; }
    bool HasEnded() const { return ended_; }
    /// The same as in Result; after the run has ended.
    int Status() const { return status_; }
    std::string Out() const { return ReadFile(files_.File("out")); }

private:
    [[noreturn]] void Become() const;
    void Pump(std::chrono::milliseconds patience);
    void CheckEnd();
    bool HasPending(int signal) const;

    Folder files_;
    std::vector<std::string> arguments_;
    // Few tests are about colours.
    std::map<std::string, std::string> environment_ = {{"NO_COLOR", "1"}};
    std::string folder_ = ".";
    unsigned short columns_ = 80;
    bool background_ = false;
    bool outToTerminal_ = false;
    int ignored_ = 0;
    pid_t child_ = -1;
    int terminal_ = -1;
    std::string screen_;
    bool ended_ = false;
    int status_ = 0;
};

} // namespace cli
