#include "Tests/Player/Visit.h"

#include "Wainroad/Game/Wainroad.h"
#include "Wainroad/Screens/Title.h"
#include "Wainroad/Screens/Travel.h"

namespace Harness {

using namespace MacToolbox;
using namespace Wainroad;

Visit::Visit(From from, GameRun::Setup setup) : run(Wainroad_main, std::move(setup))
{
    switch (from) {
    case From::start: player.waitFor(TitlePanel, 300); break;
    case From::store: player.toStore("Hob", 0); break;
    case From::road:
    case From::rolling:
        player.setOut();
        run.advance(60);
        break;
    }
    if (from == From::rolling) {
        player.click(ContinuePanel, 1);
        player.waitFor(TimeOutPanel, 400);
        run.advance(600);
    }
}

void Visit::open(const ViewProc& panel)
{
    OpenPanel(panel);
    run.advance(30);
}

void Visit::change(const std::function<void(GameState&)>& how)
{
    how(gTrain);
    run.advance(100);
}

DialogPtr Visit::dialog() { return std::dynamic_pointer_cast<DialogRecord>(FrontWindow()); }

void Visit::clickDialog(Int item)
{
    const DialogPtr front = dialog();
    const DItem* const target = front ? front->item(item) : nullptr;
    if (!target)
        return;
    const Rect place = target->rect.offsetBy(
        front->contentRect.left - gWindow->contentRect.left, front->contentRect.top - gWindow->contentRect.top);
    run.play("click " + std::to_string((place.left + place.right) / 2) + " "
        + std::to_string((place.top + place.bottom) / 2) + "\nwait 0.3");
}

void Visit::answerDialogs()
{
    for (int tries = 0; tries < 4 && run.running() && dialog(); ++tries)
        tries % 2 == 0 ? player.key("return") : clickDialog(2);
}

} // namespace Harness
