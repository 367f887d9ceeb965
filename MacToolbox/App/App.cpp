#include "MacToolbox/App/App.h"

#include "MacToolbox/App/ModuleLoader.h"
#include "MacToolbox/App/ScriptHost.h"
#include "MacToolbox/Base/HeadlessPlatform.h"
#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Host/GameThread.h"
#include "MacToolbox/Host/Input.h"

#include <cstdio>

namespace MacToolbox {

namespace {

RunState<std::vector<std::function<void()>>> sStartHooks;

/// The host that the environment asks for; ends the process if it cannot be had.
Platform& chooseHost()
{
    static auto& headless = *new HeadlessPlatform; // leaked, as the desktop's is
    if (headless.environment("WR_HEADLESS"))
        return headless;
    std::string whyNot;
    if (Platform* const desktop = loadDesktop(whyNot))
        return *desktop;
    std::fprintf(stderr, "wainroad: %s\n", whyNot.c_str());
    headless.Platform::exitProcess(1);
}

} // namespace

Int WRApp::scale = 2;

std::vector<std::function<void()>>& WRApp::willStart() { return *sStartHooks; }

void WRApp::run(const std::string& title, std::function<void()> game)
{
    if (!Platform::isInstalled())
        Platform::install(&chooseHost());
    for (const auto& hook : std::vector(willStart()))
        hook();
    Platform::current().run(title, [game = std::move(game)] {
        GameThread::start(game, [] { Platform::current().gameEnded(); });
        ScriptHost::start();
    });
}

void WRApp::requestQuit() { Input::requestQuit(); }

} // namespace MacToolbox
