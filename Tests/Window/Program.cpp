#include "Tests/Window/Program.h"

#include <chrono>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <thread>

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace Harness {

namespace {

std::vector<std::string> variables(const Program::Environment& changes)
{
    std::map<std::string, std::string> all;
    for (char** entry = environ; *entry; ++entry)
        if (const char* const equals = std::strchr(*entry, '='))
            all[std::string(*entry, static_cast<std::size_t>(equals - *entry))] = equals + 1;
    for (const auto& [name, value] : changes) {
        all.erase(name);
        if (value)
            all[name] = *value;
    }
    std::vector<std::string> lines;
    for (const auto& [name, value] : all)
        lines.push_back(name + "=" + value);
    return lines;
}

std::vector<char*> pointers(std::vector<std::string>& texts)
{
    std::vector<char*> all;
    for (std::string& text : texts)
        all.push_back(text.data());
    all.push_back(nullptr);
    return all;
}

} // namespace

Program::Program(const std::vector<std::string>& command, const Environment& environment)
{
    std::vector<std::string> words = command, lines = variables(environment);
    const auto arguments = pointers(words), entries = pointers(lines);
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe");
    pid_ = fork();
    if (pid_ == 0) {                      // the test may have other threads: nothing but system calls from here on
        prctl(PR_SET_PDEATHSIG, SIGKILL); // a test that is killed leaves nothing behind
        dup2(ends[1], 1);
        dup2(ends[1], 2);
        execvpe(arguments[0], arguments.data(), entries.data());
        _exit(127);
    }
    close(ends[1]);
    pipe_ = ends[0];
    fcntl(pipe_, F_SETFL, O_NONBLOCK);
}

Program::~Program()
{
    if (running())
        kill(pid_, SIGKILL);
    wait(10);
    close(pipe_);
}

void Program::signal(int number) const { kill(pid_, number); }

bool Program::running()
{
    output();
    if (status_)
        return false;
    int status = 0;
    if (waitpid(pid_, &status, WNOHANG) == pid_)
        status_ = WIFSIGNALED(status) ? 1000 + WTERMSIG(status) : WEXITSTATUS(status);
    return !status_;
}

int Program::wait(double seconds)
{
    waitUntil([this] { return !running(); }, seconds);
    output();
    return status_.value_or(-1);
}

std::string Program::output()
{
    char bytes[4096];
    for (ssize_t count; (count = read(pipe_, bytes, sizeof bytes)) > 0;)
        output_.append(bytes, static_cast<std::size_t>(count));
    return output_;
}

bool waitUntil(const std::function<bool()>& condition, double seconds)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    for (;;) {
        if (condition())
            return true;
        if (std::chrono::steady_clock::now() > end)
            return false;
        pauseFor(0.03);
    }
}

void pauseFor(double seconds) { std::this_thread::sleep_for(std::chrono::duration<double>(seconds)); }

long long processorTime(pid_t pid)
{
    long long sum = 0;
    for (const auto& task : std::filesystem::directory_iterator("/proc/" + std::to_string(pid) + "/task")) {
        long long spent = 0;
        std::ifstream(task.path() / "schedstat") >> spent;
        sum += spent;
    }
    return sum;
}

double processorShare(pid_t pid, double seconds)
{
    const auto begin = std::chrono::steady_clock::now();
    const long long before = processorTime(pid);
    pauseFor(seconds);
    const std::chrono::duration<double, std::nano> passed = std::chrono::steady_clock::now() - begin;
    return static_cast<double>(processorTime(pid) - before) / passed.count();
}

} // namespace Harness
