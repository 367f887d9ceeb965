#include "Tests/Player/PanelPlayer.h"

#include "Wainroad/Frame/Items.h"
#include "Wainroad/Screens/Setup.h"
#include "Wainroad/Screens/Status.h"
#include "Wainroad/Screens/Store.h"
#include "Wainroad/Screens/Title.h"

namespace Harness {

using namespace Wainroad;

bool PanelPlayer::shows(const ViewProc& panel) const
{
    const View* view = gRootView ? FindPanel(panel) : nullptr;
    return view && view->disabled == 0;
}

bool PanelPlayer::waitFor(const ViewProc& panel, Int ticks)
{
    return run_.runUntil([&] { return shows(panel); }, ticks);
}

bool PanelPlayer::click(const ViewProc& panel, Int item)
{
    View* view = gRootView ? FindPanel(panel) : nullptr;
    const View* target = view ? GetItem(*view, item) : nullptr;
    if (!target)
        return false;
    const Rect& r = target->r;
    run_.play("click " + std::to_string((r.left + r.right) / 2) + " " + std::to_string((r.top + r.bottom) / 2)
        + "\nwait 0.2");
    return true;
}

void PanelPlayer::type(const std::string& text, Int tabs)
{
    std::string script;
    for (Int i = 0; i < tabs; ++i)
        script += "key tab\n";
    run_.play(script + "type " + text);
}

void PanelPlayer::key(const std::string& name) { run_.play("key " + name + "\nwait 0.1"); }

bool PanelPlayer::toStore(const std::string& name, Int occupation)
{
    constexpr Int kTravelItem = 3, kSetOutItem = 1, kLeader = 2, kTrades = 8, kDone = 1;
    if (!waitFor(TitlePanel))
        return false;
    click(TitlePanel, kTravelItem);
    if (!waitFor(IntroPanel))
        return false;
    click(IntroPanel, kSetOutItem);
    if (!waitFor(PartyPanel2))
        return false;
    click(PartyPanel2, kLeader);
    type(name);
    if (View* trades = GetItem(*FindPanel(PartyPanel2), kTrades))
        if (const View* trade = GetItem(*trades, occupation + 1))
            run_.play("click " + std::to_string(trade->r.left + 6) + " "
                + std::to_string((trade->r.top + trade->r.bottom) / 2));
    click(PartyPanel2, kDone);
    return waitFor(StorePanel);
}

void PanelPlayer::fillStore(const Outfit& outfit)
{
    constexpr Int kFirstField = 17;
    click(StorePanel, kFirstField);
    for (int i = 0; i < 4; ++i) // the fields behind it are selected by the tab key
        key("backspace");
    bool first = true;
    for (const Int amount :
        {outfit.oxen, outfit.clothes, outfit.bullets, outfit.wheels, outfit.yokes, outfit.kingbolts, outfit.food}) {
        if (!first)
            key("tab");
        first = false;
        type(std::to_string(amount));
    }
}

bool PanelPlayer::setOut(const std::string& name, Int occupation, Int month, const Outfit& outfit)
{
    constexpr Int kBuy = 15, kFirstMonth = 3;
    if (!toStore(name, occupation))
        return false;
    fillStore(outfit);
    click(StorePanel, kBuy);
    if (!waitFor(MonthPanel))
        return false;
    click(MonthPanel, month - kFirstMonth + 1);
    return waitFor(StatusPanel);
}

} // namespace Harness
