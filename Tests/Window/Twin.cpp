#include "Tests/Window/Twin.h"

#include "Wainroad/Frame/Items.h"
#include "Wainroad/Game/Wainroad.h"
#include "Wainroad/Screens/Setup.h"
#include "Wainroad/Screens/Status.h"
#include "Wainroad/Screens/Store.h"
#include "Wainroad/Screens/Title.h"

#include <algorithm>

namespace Harness {

using namespace Wainroad;

namespace {

constexpr Int kMoment = 90; // ticks in which a screen comes to rest

GameRun::Setup withData(const std::string& data)
{
    GameRun::Setup setup;
    if (!data.empty())
        setup.environment["WR_DATA"] = data;
    return setup;
}

} // namespace

Twin::Twin(WindowedGame& game, const std::string& data) : game_(game), run_(Wainroad_main, withData(data)) { }

bool Twin::agree(const FramePtr& mask)
{
    run_.advance(kMoment);
    return game_.shows(run_.frame(), 0, mask);
}

bool Twin::waitFor(const ViewProc& panel, const FramePtr& mask) { return player_.waitFor(panel) && agree(mask); }

FramePtr Twin::movingPixels()
{
    constexpr Int kSteps = 1200, kStep = 3;
    auto moving = std::make_shared<Frame>(*run_.frame());
    const FramePtr first = run_.frame();
    std::ranges::fill(moving->pixels, 0);
    for (Int step = 0; step < kSteps; ++step) {
        run_.advance(kStep);
        const FramePtr now = run_.frame();
        if (now == first || now->pixels.size() != first->pixels.size())
            continue;
        for (std::size_t i = 0; i < now->pixels.size(); ++i)
            if (now->pixels[i] != first->pixels[i])
                moving->pixels[i] = 1;
    }
    return moving;
}

Point Twin::place(const ViewProc& panel, Int item, Int inner)
{
    View* const view = gRootView ? FindPanel(panel) : nullptr;
    View* target = view ? GetItem(*view, item) : nullptr;
    if (target && inner != 0)
        target = GetItem(*target, inner);
    return target ? Point{(target->r.top + target->r.bottom) / 2, (target->r.left + target->r.right) / 2}
                  : Point{-1, -1};
}

FramePtr Twin::itemsOf(const ViewProc& panel, Int first, Int last)
{
    auto mask = std::make_shared<Frame>(*run_.frame());
    std::ranges::fill(mask->pixels, 0);
    for (Int item = first; item <= last; ++item)
        if (const View* const view = GetItem(*FindPanel(panel), item))
            for (Int v = view->r.top; v < view->r.bottom; ++v)
                for (Int h = view->r.left; h < view->r.right; ++h)
                    mask->pixels[static_cast<std::size_t>(v * mask->width + h)] = 1;
    return mask;
}

void Twin::click(const ViewProc& panel, Int item, Int inner)
{
    const Point p = place(panel, item, inner);
    game_.click(p);
    run_.play("click " + std::to_string(p.h) + " " + std::to_string(p.v) + "\nwait 0.2");
}

void Twin::key(const std::string& name, const std::string& onDisplay)
{
    game_.desk().key(onDisplay.empty() ? name : onDisplay);
    run_.play("key " + name + "\nwait 0.1");
}

void Twin::type(const std::string& text)
{
    game_.desk().type(text);
    run_.play("type " + text);
}

bool Twin::toTitle() { return player_.waitFor(TitlePanel) && agree(movingPixels()); }

bool Twin::toStore()
{
    constexpr Int kTravel = 3, kSetOut = 1, kLeader = 2, kTrades = 8, kDone = 1;
    if (!toTitle())
        return false;
    click(TitlePanel, kTravel);
    if (!waitFor(IntroPanel))
        return false;
    click(IntroPanel, kSetOut);
    if (!waitFor(PartyPanel2, itemsOf(PartyPanel2, kLeader, kLeader + 4))) // the names that it proposes hang on chance
        return false;
    click(PartyPanel2, kLeader);
    type("Zo\u00E9 Sallis");
    for (const char* const name : {"Lettice", "Bram", "Nan", "Piers"}) {
        key("tab", "Tab");
        type(name);
    }
    click(PartyPanel2, kTrades, 1);
    if (!agree())
        return false;
    click(PartyPanel2, kDone);
    return waitFor(StorePanel);
}

bool Twin::toTrail()
{
    constexpr Int kFirstField = 17, kBuy = 15, kSecondMonth = 2;
    click(StorePanel, kFirstField);
    for (int i = 0; i < 4; ++i) // the fields behind it are selected by the tab key
        key("backspace", "BackSpace");
    bool first = true;
    for (const char* const amount : {"5", "12", "15", "2", "2", "2", "1200"}) {
        if (!first)
            key("tab", "Tab");
        first = false;
        type(amount);
    }
    if (!agree())
        return false;
    click(StorePanel, kBuy);
    if (!waitFor(MonthPanel))
        return false;
    click(MonthPanel, kSecondMonth);
    return player_.waitFor(StatusPanel);
}

} // namespace Harness
