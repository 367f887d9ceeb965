// The byte form of a state as a file may hold it: read, made safe, and travelled with.

#include "MacToolbox/Base/ManualClock.h"
#include "MacToolbox/Base/RunState.h"
#include "Wainroad/Simulation/Commands.h"
#include "Wainroad/Simulation/Journey.h"
#include "Wainroad/Simulation/Model.h"
#include "Wainroad/Simulation/Packets.h"
#include "Wainroad/Simulation/Repair.h"
#include "Wainroad/Simulation/Scoring.h"
#include "Wainroad/Simulation/Trail.h"

#include <cstdlib>

using namespace Wainroad;

static void require(bool holds)
{
    if (!holds)
        std::abort();
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    ManualClock clock;
    Clock::install(&clock);
    startRunAfresh();
    PacketsInit();
    ModelInit();

    GameState loaded;
    loaded.load(std::span(data, size));
    require(loaded.bytes().size() == static_cast<std::size_t>(kStateBytes));
    MakeHarmless(loaded);
    GameState again;
    again.load(loaded.bytes());
    require(again == loaded);

    gTrain = loaded;
    gMySlot = LastUsedSlot(gTrain);
    KeepOneWagon(gTrain, gMySlot);
    gTrain.leader = WagonOf(gTrain, gMySlot).node = gMyID;
    gTrain.wagons = gTrain.startWagons = gTrain.mode = 1;
    CopyState(gTrain, gState);
    CopyState(gTrain, gPrev);
    for (int period = 0; period < 60 && gTrain.mode != 0; ++period) {
        SendCommand(period % 3 == 0 ? I(kCommandContinue) : period % 64, period, period);
        DispatchPackets();
        ModelVBL();
        DispatchPackets();
        require(gTrain.month >= 1 && gTrain.month <= 12);
        require(gTrain.landmark >= -1 && gTrain.landmark <= kLastLandmark);
        require(gTrain.temperature >= 0 && gTrain.temperature <= 5);
        CantContinue();
        WagonScore(gMySlot);
        for (Int section = 0; section < 8; ++section) {
            Int count = 0, total = 0;
            SectionDots(section, count, total);
        }
        gMessages = {};
    }
    CloseNetwork();
    Clock::install(nullptr);
    return 0;
}
