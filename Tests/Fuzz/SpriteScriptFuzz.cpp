// The script of a sprite: run for some frames, with other sprites round it. It may end the game in the specified words,
// and in no other way.

#include "MacToolbox/App/ManualRun.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Wainroad/Errors/Errors.h"
#include "Wainroad/Frame/Sprites.h"

#include <algorithm>
#include <cstdlib>

using namespace Wainroad;

static void require(bool holds)
{
    if (!holds)
        std::abort();
}

/// One world with the script on a sprite between two others.
static void play(const Bytes& script)
{
    SpriteWorld world;
    world.bounds = {0, 0, 60, 80};
    SWOpenPort(world);
    SetPort(std::make_shared<GrafPort>(world.bounds));
    auto frames = std::make_shared<BitMaps>(4);
    for (Int n = 0; n < 4; ++n)
        frames->set(n, BitMap(Rect{0, 0, 8 + n, 9}));
    const auto masks = std::make_shared<BitMaps>(*frames);
    Int calls = 0;
    world.scriptProc = [&](Int) { ++calls; };
    AddSprite(world, frames, masks, 0, 3, 0, 10, 10)->moveDH = 1;
    const SpriteRef sprite = AddSprite(world, frames, masks, 0, 3, -1, 20, 20);
    AddSprite(world, frames, nullptr, 1, 2, 1, 25, 15);
    sprite->script = script;
    sprite->scriptProc = [](Int arg, Sprite&, bool) { return arg % 2 != 0; };
    for (Int frame = 0; frame < 200 && !sprite->dead; ++frame)
        SWAnimate(world, nullptr, true, true);
    require(sprite->cur.dst.width() == sprite->cur.src.width());
    SWDispose(world);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    ManualRun machine;
    machine.platform.variables.emplace();
    bool fatal = false;
    const int status = machine.run([&] {
        errorHooks() = {};
        errorHooks().closeNetwork = [&] { fatal = true; };
        play(Bytes(data, data + size));
        errorHooks() = {};
    });
    require(status == 0);
    require(!fatal || !errorHooks().centeredAlert);
    return 0;
}
