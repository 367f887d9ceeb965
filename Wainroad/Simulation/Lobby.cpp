#include "Wainroad/Simulation/Lobby.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Host/Misc.h"
#include "Wainroad/Simulation/Goods.h"
#include "Wainroad/Simulation/Journey.h"
#include "Wainroad/Simulation/Model.h"
#include "Wainroad/Simulation/Random.h"

#include <algorithm>

namespace Wainroad {

std::array<LobbyEntry, 60> gLobby;
Int gLobbyCount = 0;
Int gLobbyState = kLobbyNone;
Int gLobbyTick = 0;
std::array<Int, kMaxWagons> gHeard{};
std::array<Str255, kMaxPeople> gPartyNames;
Int gPartySize = 0;
Int gOccupation = 0;
Int gStartMoney = 0;
std::array<Int, kSupplyCount> gStartSupplies{};
std::array<Str255, 9> gTrainNames;
std::array<bool, 8> gTrainNameUsed{};
Int gTrainChoice = 0;
Str255 gTrainName{0};
bool gFormingShown = false;

static constexpr Int kSilence = 2250;   ///< ticks after which who is not heard counts as gone
static constexpr Int kMarkLapses = 300; ///< ticks

static const AtRunStart sFreshLobby{[] {
    gLobby.fill({});
    gPartyNames.fill(Str255{0});
    gTrainNames.fill(Str255{0});
    gTrainName = Str255{0};
    gLobbyCount = gLobbyTick = gPartySize = gOccupation = gStartMoney = gTrainChoice = 0;
    gLobbyState = kLobbyNone;
    gHeard = {};
    gStartSupplies = {};
    gTrainNameUsed = {};
    gFormingShown = false;
}};

// The way to the first day

void OpenLobby()
{
    gPlaying = 1;
    gTrain.wagons = 0;
    gTrain.leader = gState.leader = kNobody;
    gTrain.mode = gState.mode = 0;
    gTrainName = Str255{0};
    gLobbyState = kLobbyParty;
    gLobbyTick = TickCount();
    gLobby.fill({});
    gLobbyCount = 0;
    gTrain.order.fill(kNobody);
    for (std::size_t i = 0; i < gTrain.wagon.size(); ++i)
        gTrain.wagon[i].node = gState.wagon[i].node = kNobody;
    gMachines = 0;
    AddFilter(kPacketLobby, LobbyFilter);
}

static void SendLobbyPacket()
{
    QueuePackets(kPacketLobby, kAllNodes, lobbyPacket(), kLobbyPacketBytes, kBroadcastFlags);
}

void CloseLobby()
{
    gLobbyState = kLobbyLeaving;
    SendLobbyPacket();
    gLobbyState = kLobbyNone;
    RemoveFilter(kPacketLobby);
    gState.mode = gTrain.mode = 0;
}

static bool NameFits(const Str255& name)
{
    const std::size_t length = characters(name).size();
    return length >= 1 && length <= std::size_t{Name15::kMaxLength};
}

/// The index of the taken train name that the choice counts to; 8 if there are not that many.
static Int CountedTrainName()
{
    Int left = gTrainChoice;
    for (std::size_t i = 0; i < gTrainNameUsed.size(); ++i)
        if (gTrainNameUsed[i] && left-- == 0)
            return I(i);
    return I(gTrainNameUsed.size());
}

bool EnterParty(std::span<const Str255> names)
{
    gTrainChoice = CountedTrainName();
    if (names.empty() || !NameFits(names[0]))
        return false;
    Wagon& wagon = gTrain.wagon[0];
    gTrain.wagons = 1;
    gTrain.names[0] = names[0];
    gPartyNames.fill(Str255{0});
    wagon.family.fill({});
    gPartyNames[0] = names[0];
    gPartySize = 1;
    for (const Str255& name : names.subspan(1)) {
        if (!NameFits(name) || gPartySize == kMaxPeople)
            continue;
        const auto place = static_cast<std::size_t>(gPartySize++);
        wagon.family[place - 1] = name;
        gPartyNames[place] = name;
    }
    wagon.occupation = gOccupation;
    wagon.people = gPartySize;
    wagon.supply = gStartSupplies;
    wagon.node = gMyID;
    wagon.money = gStartMoney = gOccupationMoney[static_cast<std::size_t>(gOccupation & 7)];
    gTrainName = gTrainNames[static_cast<std::size_t>(std::clamp(gTrainChoice, Int{0}, Int{8}))];
    std::copy_n(gTrainName.begin(), std::min(gTrainName.size(), std::size_t{16}), gTrain.x24B.begin());
    gLobbyState = kLobbyStore;
    gLobbyTick = gHeard[0] = TickCount();
    return true;
}

void BeginSolo()
{
    gLobbyState = kLobbyNone;
    RemoveFilter(kPacketLobby);
    gLobbyTick = 1;
    gMySlot = 0;
    gTrain.captain = kNobody;
    gTrain.month = 3;
    gTrain.day = 1;
    gState.mode = 0;
    gState.leader = kNobody;
    NewTrain();
    gState.wagon[0].node = gTrain.wagon[0].node = gMyID;
    gTrain.wagon[0].supply = gStartSupplies;
    gTrain.wagon[0].money = gStartMoney;
    gTrain.startWagons = gTrain.slots = gTrain.wagons = 1;
    gTrain.leader = gMyID;
    gTrain.captain = kNobody;
    CopyState(gTrain, gState);
    CopyState(gTrain, gPrev);
    gTrain.mode = gState.mode = kModeLive;
}

void NewTrain()
{
    gTrain.speed = gOptions.speed;
    gTrain.opt244 = gOptions.opt244, gTrain.opt245 = gOptions.opt245, gTrain.opt246 = gOptions.opt246;
    gTrain.huntTime = gOptions.huntTime;
    gTrain.opt248 = gOptions.opt248;
    gTrain.x249 = kNobody;
    gTrain.leader = gMyID;
    gTrain.year = 1848;
    gTrain.startMonth = gTrain.month;
    gTrain.startDay = gTrain.day;
    gTrain.pace = gTrain.delayDays = gTrain.restDays = 0;
    gTrain.startWagons = gTrain.slots = gTrain.wagons;
    gTrain.captain = kNobody;
    gTrain.riverDepth = gTrain.riverWidth = gTrain.region = 0;
    gTrain.weather = RandomN(3);
    gTrain.temperature = Temperature();
    gTrain.rain = gTrain.snow = gTrain.rainToday = gTrain.snowToday = 0;
    gTrain.landmark = -1;
    gTrain.toNext = gTrain.miles = gTrain.x23C = gTrain.milesToday = gTrain.route = 0;
    for (std::size_t i = 0; i < gTrain.wagon.size(); ++i) {
        gTrain.order[i] = I(i);
        Wagon& wagon = gTrain.wagon[i];
        wagon.flags = wagon.flags2 = wagon.rations = 0;
        wagon.startPeople = wagon.people;
        wagon.health = wagon.sickness = wagon.x62 = 0;
        wagon.illness.fill(kWell);
        wagon.illDays.fill(0);
        wagon.x5E = kNobody;
    }
}

void BeginMonth(Int month)
{
    gTrain.month = month;
    if (month == 3)
        gTrain.snow = RandomN(1200);
    gTrain.rain = (8 - month) * 100 + RandomN(100);
    gTrain.weather = 0;
    gTrain.temperature = Temperature();
    for (GameState* state : {&gTrain, &gState}) {
        state->month = state->startMonth = month;
        state->day = state->startDay = 1;
    }
}

// Who is heard

static void RemoveEntry(Int index)
{
    --gLobbyCount;
    const auto last = static_cast<std::size_t>(gLobbyCount);
    gLobby[static_cast<std::size_t>(index)] = gLobby[last];
    gLobby[last] = {};
}

/// Drops the wagons of the forming train that have not been heard for long; the last one takes the place.
static void DropSilentWagons(Int now)
{
    for (Int i = std::min(gTrain.wagons, kMaxWagons) - 1; i >= 0; --i) {
        const auto place = static_cast<std::size_t>(i);
        if (gHeard[place] + kSilence >= now)
            continue;
        const auto last = static_cast<std::size_t>(--gTrain.wagons);
        if (place != last) {
            gHeard[place] = gHeard[last];
            gTrain.wagon[place] = gTrain.wagon[last];
        }
        gHeard[last] = 0;
        gTrain.wagon[last].node = kNobody;
    }
}

void LobbyVBL()
{
    const Int now = TickCount();
    if (gLobbyTick >= 3 && gLobbyTick + kMarkLapses < now)
        gLobbyTick = 0;
    DropSilentWagons(now);
    for (Int i = 0; i < gLobbyCount; ++i) // who takes the place of a dropped one waits for the next round
        if (gLobby[static_cast<std::size_t>(i)].heard + kSilence < now)
            RemoveEntry(i);
    SendLobbyPacket();
}

void LobbyFilter(const PacketHeader& header)
{
    std::array<std::uint8_t, 128> b{};
    std::copy_n(header.data.begin(), std::min(header.data.size(), b.size()), b.begin());
    const Int state = b[0];
    const Str255 trainName = str15(std::span(b).subspan(21)), leaderName = str15(std::span(b).subspan(38));

    const auto end = gLobby.begin() + gLobbyCount;
    const auto entry = std::find_if(gLobby.begin(), end, [&](const LobbyEntry& e) { return e.node == header.sender; });
    if (entry != end) {
        if (state < kLobbyParty) {
            RemoveEntry(entry - gLobby.begin());
            return;
        }
        const bool named = state >= kLobbyStore;
        *entry = {header.sender, state, TickCount(), named ? leaderName : Str255{0}, named ? trainName : Str255{0}};
    } else {
        if (state < kLobbyParty)
            return;
        if (gLobbyCount < I(gLobby.size()))
            gLobby[static_cast<std::size_t>(gLobbyCount++)] = {header.sender, state, TickCount(), {0}, {0}};
    }
    if (state == kLobbyReady || (state == kLobbyTrain && trainName == str15(gTrainName)))
        gLobbyTick = TickCount();
}

/// Appends a counted string in a field of zeros.
static void WriteName(ByteWriter& out, const Str255& name, Int field)
{
    const Int end = I(out.bytes.size()) + field;
    out.raw(std::span(name).first(std::min(name.size(), static_cast<std::size_t>(field))));
    out.pad(end);
}

Bytes lobbyPacket()
{
    ByteWriter out;
    out.u8(gLobbyState), out.u8(gOccupation), out.u32(gStartMoney);
    for (const Int amount : gStartSupplies)
        out.u16(amount);
    out.u8(gPartySize);
    WriteName(out, gTrainName, 17);
    for (const Str255& name : gPartyNames)
        WriteName(out, name, 16);
    return out.bytes;
}

} // namespace Wainroad
