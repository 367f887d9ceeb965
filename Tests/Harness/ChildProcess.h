#pragma once

#include <functional>
#include <string>

#include <sys/types.h>

namespace Harness {

/// A piece of a test in a process of its own, for what ends the process or must not take the test along.
class ChildProcess {
public:
    /// Forks and runs `body` in the child, which ends with status 99 if `body` returns. Only while the test has no
    /// thread but its own.
    explicit ChildProcess(const std::function<void()>& body);
    /// Kills the child if it still runs.
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    /// Waits for its end for at most that many seconds.
    /// @return Its status; 1000 and the signal's number if a signal ended it; -1 if it still runs.
    int wait(double seconds);
    /// What it has written on both output streams; whole once it has ended.
    std::string output();

private:
    pid_t pid_ = -1;
    int pipe_ = -1;
    int status_ = -1;
    std::string output_;
};

} // namespace Harness
