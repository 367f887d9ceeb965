#include "Tests/Harness/ChildProcess.h"

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <thread>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Harness {

namespace {

constexpr int kReturned = 99;

int statusOf(int raw) { return WIFEXITED(raw) ? WEXITSTATUS(raw) : 1000 + WTERMSIG(raw); }

} // namespace

ChildProcess::ChildProcess(const std::function<void()>& body)
{
    int ends[2];
    if (pipe(ends) != 0)
        std::abort();
    std::fflush(nullptr);
    pid_ = fork();
    if (pid_ == 0) {
        dup2(ends[1], STDOUT_FILENO);
        dup2(ends[1], STDERR_FILENO);
        close(ends[0]);
        close(ends[1]);
        body();
        std::fflush(nullptr);
        _exit(kReturned);
    }
    close(ends[1]);
    pipe_ = ends[0];
    fcntl(pipe_, F_SETFL, O_NONBLOCK);
}

ChildProcess::~ChildProcess()
{
    if (wait(0) < 0) {
        kill(pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);
    }
    close(pipe_);
}

int ChildProcess::wait(double seconds)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    while (status_ < 0) {
        output();
        int raw = 0;
        if (waitpid(pid_, &raw, WNOHANG) == pid_)
            status_ = statusOf(raw);
        else if (std::chrono::steady_clock::now() >= end)
            break;
        else
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return status_;
}

std::string ChildProcess::output()
{
    char part[4096];
    for (ssize_t count; (count = read(pipe_, part, sizeof part)) > 0;)
        output_.append(part, static_cast<std::size_t>(count));
    return output_;
}

} // namespace Harness
