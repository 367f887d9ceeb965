#include "Tests/Harness/GameRun.h"

#include "MacToolbox/App/ScriptHost.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <utility>

namespace Harness {

using namespace MacToolbox;

namespace {

constexpr std::chrono::seconds kRealPatience{300}; // of one turn of the game; far more than any needs
constexpr int kAbandoned = -1;

} // namespace

GameRun::GameRun(std::function<void()> program) : GameRun(std::move(program), Setup{}) { }

GameRun::GameRun(std::function<void()> program, Setup setup)
{
    auto& variables = machine_.platform.variables.emplace(std::move(setup.environment));
    variables.insert(
        {{"WR_HEADLESS", ""}, {"WR_DATA", data_.path()}, {"WR_OUT", out_.path()}, {"WR_DATE", "1848-04-01"}});
    if (!setup.script.empty())
        variables["WR_SCRIPT"] = out_.write("the.script", setup.script);
    machine_.platform.resources = std::move(setup.resources);
    machine_.onYield = [this] { onYield(); };
    thread_ = std::thread([this, program = std::move(program)] {
        onGameStack([&] {
            {
                std::unique_lock lock(mutex_);
                passed_.wait(lock, [this] { return turn_ == Turn::game; });
            }
            const int status = machine_.run([&] {
                if (!abandoned_)
                    program();
            });
            const std::lock_guard lock(mutex_);
            status_ = status;
            turn_ = Turn::test;
            passed_.notify_all();
        });
    });
    letRun(0, nullptr); // to its first yield, so that the start of the run is over
}

GameRun::~GameRun()
{
    abandoned_ = true;
    if (running())
        letRun(INT64_MAX, nullptr);
    thread_.join();
}

bool GameRun::advance(Int ticks)
{
    letRun(machine_.clock.time() + ticks * kTickNanos, nullptr);
    return running();
}

bool GameRun::runUntil(std::function<bool()> condition, Int mostTicks)
{
    if (running() && condition())
        return true;
    letRun(machine_.clock.time() + mostTicks * kTickNanos, std::move(condition));
    return held_;
}

bool GameRun::runToEnd(Int mostTicks)
{
    advance(mostTicks);
    return !running();
}

bool GameRun::call(std::function<void()> work, Int ticks)
{
    call_ = std::move(work);
    return advance(ticks);
}

bool GameRun::play(std::string_view script)
{
    const auto player = std::make_shared<Script>(std::string(script), outFolder());
    const auto ended = std::make_shared<bool>(false);
    machine_.clock.run(0, [player, ended] {
        const auto wait = player->step();
        *ended = !wait;
        return wait;
    });
    runUntil([ended] { return *ended; });
    return running();
}

/// Gives the game its turn, until the time is up or the condition holds.
void GameRun::letRun(Nanos until, std::function<bool()> condition)
{
    held_ = false;
    if (!running())
        return;
    until_ = until;
    condition_ = std::move(condition);
    std::unique_lock lock(mutex_);
    turn_ = Turn::game;
    passed_.notify_all();
    if (passed_.wait_for(lock, kRealPatience, [this] { return turn_ == Turn::test; }))
        return;
    std::fprintf(
        stderr, "The game has not yielded for %lld s: it hangs.\n", static_cast<long long>(kRealPatience.count()));
    std::abort();
}

/// On the game's thread: stops here if the turn is over.
void GameRun::onYield()
{
    if (const auto work = std::exchange(call_, nullptr))
        work(); // it may yield in turn
    held_ = condition_ && condition_();
    if (held_ || machine_.clock.time() >= until_) {
        std::unique_lock lock(mutex_);
        turn_ = Turn::test;
        passed_.notify_all();
        passed_.wait(lock, [this] { return turn_ == Turn::game; });
    }
    if (abandoned_)
        machine_.platform.exitProcess(kAbandoned);
}

} // namespace Harness
