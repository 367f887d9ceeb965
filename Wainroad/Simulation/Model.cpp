#include "Wainroad/Simulation/Model.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Host/Misc.h"
#include "Wainroad/Errors/Errors.h"
#include "Wainroad/Simulation/Commands.h"
#include "Wainroad/Simulation/Journey.h"
#include "Wainroad/Simulation/Lobby.h"

#include <algorithm>

namespace Wainroad {

Int gMySlot = 0;
bool gMourning = false;
bool gNewDeaths = false;
Int gModelTicks = 0;
Int gPlaying = 0;
Int gLeaderStart = 0;
bool gTradeWithEmigrant = false;

std::array<ModelMessage, 8> gMessages;
Int gMessageCount = 0;
Bytes gStateBuffer(static_cast<std::size_t>(kStateBytes));
std::array<Int, 32> gNodeMissing{};
std::array<Int, 8> gNodeSerial{};
Int gStateCount = 0;

static VBLTaskPtr gModelVBL;
static Bytes sBroadcast; // kept for its room

static const AtRunStart sFreshModel{[] {
    gMySlot = gModelTicks = gPlaying = gLeaderStart = gMessageCount = gStateCount = 0;
    gMourning = gNewDeaths = gTradeWithEmigrant = false;
    gMessages = {};
    gStateBuffer.assign(static_cast<std::size_t>(kStateBytes), 0);
    gNodeMissing = {};
    gNodeSerial = {};
    gModelVBL.reset();
}};

void ModelInit()
{
    gTrain.mode = gState.mode = gPrev.mode = 0;
    gMessages = {};
    gMessageCount = 0;
    AddFilter(kPacketState, StateFilter);
    AddFilter(kPacketCommand, CommandFilter);
    AddFilter(kPacketSystem, SystemFilter);
    gModelVBL = std::make_shared<VBLTask>();
    gModelVBL->vblCount = kModelTicks;
    gModelVBL->vblAddr = [](VBLTask& task) {
        task.vblCount = kModelTicks;
        ModelVBL();
    };
    if (const OSErr failed = VInstall(gModelVBL))
        Fatal(failed, "ModelInit2");
}

void ModelClose() { VRemove(gModelVBL); }

/// True if days pass: the train rests, or moves and is not suspended.
static bool DaysPass()
{
    return gTrain.mode & kModeResting || (gTrain.mode & (kModeMoving | kModeSuspended)) == kModeMoving;
}

void ModelVBL()
{
    if (gLobbyState != kLobbyNone)
        LobbyVBL();
    if (gTrain.mode == 0)
        return;
    const Int before = gModelTicks;
    gModelTicks = Held8(gModelTicks + 1);
    if (gModelTicks >= gTrain.speed) {
        if (DaysPass()) {
            NextDay();
            gModelTicks = 0;
        } else {
            gModelTicks = before; // one period short of a day
        }
    }
    BroadcastState();
    if (gMyID != gTrain.leader || gTrain.mode & kModeOver)
        gTrain.mode = 0;
}

void BroadcastState()
{
    gTrain.clamp();
    gTrain.packBroadcast(sBroadcast);
    QueuePackets(kPacketState, kAllNodes, sBroadcast, I(sBroadcast.size()), kBroadcastFlags);
}

void CopyState(GameState& from, GameState& to)
{
    from.clamp();
    const Int carried = from.sentWagons();
    Bytes packed;
    from.packBroadcast(packed);
    to.loadBroadcast(packed);
    for (Int i = carried; i < kMaxWagons; ++i)
        to.wagon[static_cast<std::size_t>(i)].narrow();
}

void StateFilter(const PacketHeader& packet)
{
    if (gState.mode == 0)
        return;
    const Int fragments = I(gNodeSerial.size());
    if (packet.part < 1 || packet.part > fragments || packet.parts < 1 || packet.parts > fragments)
        return;
    const auto i = static_cast<std::size_t>(packet.part - 1);
    gNodeMissing[i] = 1;
    gNodeSerial[i] = packet.serial;
    const Int at = I(i) * kPacketBytes;
    const Int count = std::min(I(packet.data.size()), I(gStateBuffer.size()) - at);
    std::copy_n(packet.data.begin(), count, gStateBuffer.begin() + at);
    const auto parts = static_cast<std::ptrdiff_t>(packet.parts);
    if (std::count(gNodeMissing.begin(), gNodeMissing.begin() + parts, 0) != 0
        || !std::is_sorted(gNodeSerial.begin(), gNodeSerial.begin() + parts))
        return;

    static GameState received; // its room is kept; every field that is copied is loaded here
    received.loadBroadcast(gStateBuffer);
    CopyState(received, gState);
    ++gStateCount;
    std::fill_n(gNodeMissing.begin(), parts, 0);
    if (gState.mode & kModeOver)
        gState.mode = 0;
}

void SystemFilter(const PacketHeader& packet)
{
    if (gState.mode == 0 || packet.data.empty() || packet.data[0] == 0)
        return;
    const auto free =
        std::find_if(gMessages.begin(), gMessages.end(), [](const ModelMessage& m) { return m.kind == 0; });
    if (free == gMessages.end())
        return;
    ByteReader in(packet.data);
    free->kind = in.u8();
    free->a = in.u8();
    free->b = in.u8();
    free->c = in.u8();
    ++gMessageCount;
}

} // namespace Wainroad
