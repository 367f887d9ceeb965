#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

namespace Harness {

/// A program in a process of its own, with its own environment beside the test's. Killed at the end of the block if it
/// still runs.
class Program {
public:
    using Environment = std::map<std::string, std::optional<std::string>>; ///< nothing: not there

    Program(const std::vector<std::string>& command, const Environment& environment);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    pid_t pid() const { return pid_; }
    void signal(int number) const;
    bool running();
    /// Waits for its end. @return Its status, 1000 and more for a signal; -1 if it still runs.
    int wait(double seconds);
    /// What it has written on both output streams so far.
    std::string output();

private:
    pid_t pid_ = -1;
    int pipe_ = -1;
    std::optional<int> status_;
    std::string output_;
};

/// Tries until `condition` holds. @return False if it did not within that time.
bool waitUntil(const std::function<bool()>& condition, double seconds = 60);
void pauseFor(double seconds);

/// Nanoseconds that all threads of a process have been on a processor.
long long processorTime(pid_t pid);
/// The part of one processor that the process takes over that many seconds, 0 to 1 and more.
double processorShare(pid_t pid, double seconds);

} // namespace Harness
