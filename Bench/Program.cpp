// The whole game as a person meets it: how soon it is up, how soon a key shows, what it takes at rest.
#include "Bench/Program.h"

#include "MacToolbox/Base/Clock.h"
#include "MacToolbox/Base/Platform.h"
#include "Tests/Harness/TemporaryFolder.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <vector>

#include <sys/wait.h>
#include <unistd.h>

namespace peers {

namespace {

using namespace MacToolbox;
using Harness::readFile;
using Harness::TemporaryFolder;

constexpr const char* kToTrail = "14-lanthorn.png"; // the picture of the demonstration that shows the standing trail
constexpr const char* kToName = "03-party.png";     // and the one before the names are typed
constexpr Nanos kAtRest = 10 * kSecond;

/// The lines of the demonstration up to the shot of that picture.
std::string demonstrationTo(const char* picture)
{
    const std::string all = readFile(std::string(WR_DEMONSTRATION));
    return all.substr(0, std::min(all.find(std::string("shot ") + picture), all.size()));
}

/// A game in a process of its own, with empty folders.
class Game {
public:
    /// @param measure  "start" or "letter" of the measured game; "" is the program itself.
    Game(const std::string& measure, const std::string& script)
    {
        const std::string folder = Platform::current().programFolder();
        const std::string program = measure.empty() ? folder + "/wainroad" : folder + "/bench_game";
        const std::string since = std::to_string(Clock::current().now());
        if (pipe(pipe_) != 0)
            std::abort();
        pid_ = fork();
        if (pid_ != 0) {
            close(pipe_[1]);
            return;
        }
        dup2(pipe_[1], STDOUT_FILENO);
        setenv("WR_HEADLESS", "", 1);
        setenv("WR_DATE", "1848-04-01", 1);
        setenv("WR_DATA", folder_.path("data").c_str(), 1);
        setenv("WR_OUT", folder_.path().c_str(), 1);
        if (!script.empty())
            setenv("WR_SCRIPT", folder_.write("the.script", script).c_str(), 1);
        execl(program.c_str(), program.c_str(), measure.c_str(), since.c_str(), nullptr);
        _exit(127);
    }
    ~Game()
    {
        kill(pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);
        close(pipe_[0]);
    }
    Game(const Game&) = delete;
    Game& operator=(const Game&) = delete;

    /// The numbers that it printed, once it has ended; fewer if it failed.
    std::vector<double> numbers()
    {
        std::string text;
        char part[256];
        for (ssize_t count; (count = read(pipe_[0], part, sizeof part)) > 0;)
            text.append(part, static_cast<std::size_t>(count));
        std::vector<double> all;
        for (char *at = text.data(), *end;; at = end) {
            const double number = std::strtod(at, &end);
            if (end == at)
                return all;
            all.push_back(number);
        }
    }
    bool hasWritten(const std::string& name) const { return std::filesystem::exists(folder_.path(name)); }
    /// Processor time of all its threads so far.
    Nanos processor() const
    {
        Nanos all = 0;
        std::error_code error;
        for (const auto& task : std::filesystem::directory_iterator("/proc/" + std::to_string(pid_) + "/task", error))
            all += std::atoll(readFile(task.path() / "schedstat").c_str());
        return all;
    }
    /// Most resident memory so far, in MiB.
    double memory() const
    {
        const std::string status = readFile("/proc/" + std::to_string(pid_) + "/status");
        const auto at = status.find("VmHWM:");
        return at == std::string::npos ? -1 : std::atof(status.c_str() + at + 6) / 1024;
    }

private:
    TemporaryFolder folder_;
    pid_t pid_ = -1;
    int pipe_[2];
};

void row(const char* what, const char* goal, const std::vector<double>& numbers, const char* unit)
{
    std::printf("| %s | ", what);
    if (numbers.empty())
        std::printf("FAILED");
    for (std::size_t i = 0; i < numbers.size(); ++i)
        std::printf("%s%.2f %s", i == 0 ? "" : ", ", numbers[i], unit);
    std::printf(" | %s |\n", goal);
    std::fflush(stdout);
}

void reportStart()
{
    std::vector<double> starts;
    for (Int i = 0; i < 21; ++i)
        if (const auto one = Game("start", "").numbers(); one.size() == 1)
            starts.push_back(one[0]);
    std::ranges::sort(starts);
    row("process start to first publish", "30 ms", starts.empty() ? starts : std::vector{starts[starts.size() / 2]},
        "ms");
}

/// Processor and memory of the program over some seconds after the script has taken its last picture.
void reportRest(const char* what, const char* goal, const std::string& script)
{
    Game game("", script + "\nshot there.png\n");
    Clock& clock = Clock::current();
    const Nanos patience = clock.now() + 180 * kSecond;
    while (!game.hasWritten("there.png") && clock.now() < patience)
        clock.sleep(kSecond / 10);
    clock.sleep(2 * kSecond);
    if (!game.hasWritten("there.png"))
        return row(what, goal, {}, "");
    const Nanos before = game.processor(), since = clock.now();
    clock.sleep(kAtRest);
    const double share = static_cast<double>(game.processor() - before) / static_cast<double>(clock.now() - since);
    row(what, goal, {100 * share}, "% of a core");
    row("resident memory there", "16 MiB", {game.memory()}, "MiB");
}

} // namespace

void reportProgram()
{
    std::printf("\n| the whole game, headless, in real time | measured | goal |\n|---|---|---|\n");
    reportStart();
    row("key in a name field to its letter: median, 95th percentile", "0.5 ms, 2 ms",
        Game("letter", demonstrationTo(kToName)).numbers(), "ms");
    reportRest("the animated title", "2 %", "wait 4");
    reportRest("the standing trail", "1 %", demonstrationTo(kToTrail));

    std::printf("\n| played under the manual clock | measured | goal |\n|---|---|---|\n");
    for (const auto& [name, measure] : {std::pair{"sprite_frame_hunt", "hunt"}, {"sprite_frame_raft", "raft"},
             {"sprite_frame_crossing", "crossing"}, {"journal_scroll", "scroll"}})
        row((std::string(name) + ": median, 95th percentile").c_str(), "0.3 ms", Game(measure, "").numbers(), "ms");
    std::vector<double> journey = Game("journey", "").numbers();
    journey.resize(2, -1);
    row("a journey from the title to the legends", "3 s", {journey[0]}, "s");
    row("resident memory grows on a journey by", "1 MiB", {journey[1]}, "MiB");
    row("from the start-up sound's end to the title", "2 ticks", Game("tune", "").numbers(), "ticks");
}

int reportWindow()
{
    const std::string program = Platform::current().programFolder() + "/bench_window";
    execl(program.c_str(), program.c_str(), nullptr);
    std::fprintf(stderr, "bench: %s is not built: it needs Qt 6, SDL 2 and libXtst\n", program.c_str());
    return 1;
}

} // namespace peers
