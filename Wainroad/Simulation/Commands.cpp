#include "Wainroad/Simulation/Commands.h"

#include "Wainroad/Simulation/Fields.h"
#include "Wainroad/Simulation/Goods.h"
#include "Wainroad/Simulation/Hazards.h"
#include "Wainroad/Simulation/Model.h"
#include "Wainroad/Simulation/News.h"
#include "Wainroad/Simulation/Trail.h"

#include <algorithm>

namespace Wainroad {

// What the view sends

static void QueueCommand(std::span<const std::uint8_t> bytes)
{
    QueuePackets(kPacketCommand, gState.leader, bytes, I(bytes.size()), 0);
}

void SendCommand(Int command, Int a, Int b)
{
    std::array<std::uint8_t, 8> packet{};
    FieldWriter out(packet.data());
    out.u8(command), out.u8(gMySlot), out.u8(a), out.u8(0), out.s32(b);
    QueueCommand(packet);
}

void SendRest(Int days) { SendCommand(kCommandRest, days, 0); }

void SendSupplyChange(std::span<const Int> change, Int cents)
{
    std::array<std::uint8_t, 20> packet{};
    FieldWriter out(packet.data());
    out.u8(kCommandSupplies), out.u8(gMySlot);
    for (std::size_t i = 0; i < std::size_t{kSupplyCount}; ++i)
        out.s16(i < change.size() ? change[i] : 0);
    out.s32(cents);
    QueueCommand(packet);
}

void SendLossPacket(Int kind, std::span<const Int> supplies, std::span<const Int> drowned)
{
    QueueCommand(LossPacket::bytes(kind, gMySlot, supplies, drowned));
}

// What the model does

namespace {

/// A command as it came: longer fields follow the first eight bytes.
struct CommandPacket {
    Int command = 0, slot = 0, a = 0, b = 0;
    Int byte7 = 0; ///< the lowest byte of `b`
    std::span<const std::uint8_t> bytes;
};

CommandPacket readCommand(std::span<const std::uint8_t> bytes)
{
    CommandPacket packet;
    ByteReader in(bytes);
    packet.command = in.u8();
    packet.slot = in.u8() & 31;
    packet.a = in.u8();
    in.skip(1);
    packet.b = in.s32();
    packet.byte7 = packet.b & 255;
    packet.bytes = bytes;
    return packet;
}

void Gain(Int& bits, Int bit) { bits |= bit; }
void Lose(Int& bits, Int bit) { bits &= ~bit; }

bool AnyoneHas(Int flagsMask, Int flags2Mask) { return CountAilments(gTrain, -1, flagsMask, flags2Mask) != 0; }

/// Heads for the next landmark by the normal way.
void NextLeg()
{
    ++gTrain.landmark;
    gTrain.toNext = gTrain.x23C = gTrailMiles[TrailRow(gTrain.landmark)][0];
}

void Hunted(Wagon& wagon, Int food, Int bullets)
{
    Lose(wagon.flags, kFlagHunting);
    wagon.supply[kFood] += food;
    wagon.supply[kBullets] -= LoWord(bullets);
    if (AnyoneHas(kFlagHunting, 0))
        return;
    ++gTrain.restDays;
    Gain(gTrain.mode, kModeResting);
}

/// Command 5. At the end of the trail there is no leg to go on to.
void GoOn(Int route)
{
    const bool stands = gTrain.toNext == 0;
    if (CheckWagons()) {
        if (stands && IsRiver(gTrain.landmark))
            NextLeg();
        return;
    }
    gTrain.route = route;
    if (stands) {
        if (gTrain.landmark >= kLastLandmark)
            return;
        NextLeg();
        const bool firstBranch = gTrain.landmark == kFirstFork + 1 && (route & 1) != 0;
        const bool secondBranch = gTrain.landmark == kSecondFork + 1 && (route & 2) != 0;
        if (firstBranch || secondBranch) {
            gTrain.toNext = gTrain.x23C = gTrailMiles[TrailRow(gTrain.landmark)][1];
            ++gTrain.landmark;
        }
    }
    Gain(gTrain.mode, kModeMoving);
    gModelTicks = 0;
}

void Cross(Wagon& wagon, bool mine)
{
    Gain(wagon.flags2, kFlag2Crossing);
    gMourning = gNewDeaths = false;
    if (!mine)
        return;
    gModelTicks = 0;
    if (gTrain.landmark < kLastLandmark)
        NextLeg();
    Lose(gTrain.mode, kModeMoving);
}

void AskTalkTurn(const CommandPacket& packet)
{
    Lose(gTrain.mode, kModeMoving);
    if (gTrain.x249 != kNobody) {
        SendMessage(kMessageTalkTurn, gTrain.x249, 0, 0, packet.byte7);
        return;
    }
    gTrain.x249 = packet.a == kNobody ? I(packet.bytes[1]) : packet.a;
    SendMessage(kMessageTalkTurn, gTrain.x249, 1, 0, kAllNodes);
}

void EndTalk(Wagon& wagon)
{
    Lose(wagon.flags, kFlagTalking);
    if (!AnyoneHas(kFlagTalking, 0))
        gTrain.x249 = kNobody;
    SendMessage(kMessageTalkEnded, 0, 0, 0, wagon.node);
    if (gTrain.opt245 == 2 && gTrain.x249 == kNobody)
        gTrain.opt245 = 1;
}

void Fine()
{
    for (Int slot = 0; slot < kMaxWagons; ++slot)
        if (SlotUsed(gTrain, slot)) {
            Wagon& wagon = WagonOf(gTrain, slot);
            wagon.money = std::max(wagon.money - 500, Int{0});
        }
}

void ChangeSupplies(Wagon& wagon, std::span<const std::uint8_t> bytes)
{
    ByteReader in(bytes, 2);
    for (Int& amount : wagon.supply)
        amount = HeldS16(amount + in.s16());
    wagon.money = std::max(wagon.money + in.s32(), Int{0});
    CheckEmptyTrain();
}

// Trade

constexpr Int kItemMoney = 7, kItemNothing = 8;

Int& Holding(Wagon& wagon, Int item)
{
    return item == kItemMoney ? wagon.money : wagon.supply[static_cast<std::size_t>(item)];
}

/// One half of a trade; oxen change hands in pairs.
struct Half {
    Int item, amount;

    Half(Int i, Int n) : item(i), amount(i == kOxen ? n * 2 : n) { }

    bool canMove(Wagon& giver, Wagon& taker) const
    {
        if (item == kItemNothing)
            return true;
        if (item < 0 || item > kItemNothing)
            return false;
        if (static_cast<std::uint64_t>(Holding(giver, item)) < static_cast<std::uint64_t>(amount))
            return false;
        if (item == kItemMoney)
            return true;
        return Holding(taker, item) + amount <= gSupplyLimit[static_cast<std::size_t>(item)];
    }
    void move(Wagon& giver, Wagon& taker) const
    {
        if (item == kItemNothing)
            return;
        Holding(giver, item) -= amount;
        Holding(taker, item) += amount;
    }
};

void Trade(std::span<const std::uint8_t> bytes)
{
    if (gTradeWithEmigrant) {
        gTradeWithEmigrant = false;
        return;
    }
    ByteReader in(bytes, 1);
    Wagon& answers = WagonOf(gTrain, in.u8());
    Wagon& offered = WagonOf(gTrain, in.u8());
    const Int itemA = in.u8(), amountA = in.s32();
    const Int itemB = in.u8();
    in.skip(1);
    const Int amountB = in.s32();
    const Half a(itemA, amountA), b(itemB, amountB);
    if (!a.canMove(answers, offered) || !b.canMove(offered, answers))
        return;
    b.move(offered, answers);
    a.move(answers, offered);
    if (offered.x5E == itemA)
        offered.x5E = kNobody;
}

// Rivers

/// Takes the losses, and tells of them if there are any.
void TakeLosses(Wagon& wagon, Int slot, const LossPacket& losses)
{
    for (std::size_t i = 0; i < wagon.supply.size(); ++i)
        wagon.supply[i] = std::max(wagon.supply[i] - losses.supplies[i], Int{0});
    if (std::any_of(losses.supplies.begin(), losses.supplies.end(), [](Int n) { return n != 0; }))
        SendLosses(66, slot, losses.supplies, 0);
}

void Crossed(Wagon& wagon, Int slot, const LossPacket& losses)
{
    Lose(wagon.flags2, kFlag2Crossing | kFlag2CrossingChosen);
    Lose(gTrain.mode, kModeSuspended);
    TakeLosses(wagon, slot, losses);
    bool died = false;
    for (std::size_t member = 0; member < wagon.illness.size(); ++member) {
        if (losses.drowned[member] == 0 || wagon.illness[member] == kDead)
            continue;
        wagon.illness[member] = kDead;
        --wagon.people;
        died = true;
    }
    if (died) {
        if (wagon.people == 0)
            WagonGone(wagon, slot);
        gMourning = gNewDeaths = true;
    }
    if (AnyoneHas(0, kFlag2Crossing))
        return;
    if (gNewDeaths) {
        SendMessage(kMessageDeath, 0, 0, 0, kAllNodes, kBroadcastFlags);
        gNewDeaths = false;
    } else {
        Gain(gTrain.mode, kModeMoving);
    }
}

void Rafted(Wagon& wagon, Int slot, const LossPacket& losses)
{
    Lose(wagon.flags2, kFlag2Rafting);
    TakeLosses(wagon, slot, losses);
    for (std::size_t member = 0; member < wagon.illness.size(); ++member) {
        if (losses.drowned[member] == 0 || wagon.illness[member] == kDead)
            continue;
        wagon.health = std::min(wagon.health, Int{105});
        wagon.illness[member] = kDead;
        if (--wagon.people == 0)
            WagonGone(wagon, slot);
        else
            News(53, slot, 1, true); // the person's place holds a count: one drowned
    }
}

} // namespace

void CommandFilter(const PacketHeader& header)
{
    if (gTrain.mode == 0)
        return;
    Bytes bytes = header.data;
    bytes.resize(bytes.size() + 24);
    const CommandPacket packet = readCommand(bytes);
    const Int slot = packet.slot, a = packet.a;
    Wagon& wagon = WagonOf(gTrain, slot);
    switch (packet.command) {
    case kCommandRations: wagon.rations = a; break;
    case kCommandRequest: wagon.x5E = a, wagon.x5A = packet.b, wagon.x5F = 21; break;
    case kCommandPace: gTrain.pace = a; break;
    case kCommandRest: gTrain.restDays = a, Gain(gTrain.mode, kModeResting); break;
    case kCommandStop: Lose(gTrain.mode, kModeMoving); break;
    case kCommandContinue: GoOn(a); break;
    case kCommandHunted: Hunted(wagon, a, packet.b); break;
    case kCommandEnterStore: Gain(wagon.flags, kFlagInStore); break;
    case kCommandLeaveStore: Lose(wagon.flags, kFlagInStore); break;
    case kCommandCross: Cross(wagon, bytes[1] == gMySlot); break;
    case kCommandRaft: Gain(wagon.flags2, kFlag2Rafting); break;
    case kCommandTalk: AskTalkTurn(packet); break;
    case kCommandTalkBegins: Gain(wagon.flags, kFlagTalking); break;
    case kCommandTalkEnds: EndTalk(wagon); break;
    case kCommandCrossingChosen: Gain(wagon.flags2, kFlag2CrossingChosen); break;
    case kCommandHunt: Gain(wagon.flags, kFlagHunting), Lose(gTrain.mode, kModeMoving); break;
    case kCommandMark: Gain(wagon.flags2, kFlag2Mark); break;
    case kCommandUnmark: Lose(wagon.flags2, kFlag2Mark); break;
    case kCommandFine: Fine(); break;
    case kCommandSupplies: ChangeSupplies(wagon, bytes); break;
    case kCommandTrade: Trade(bytes); break;
    case kCommandCrossed: Crossed(wagon, slot, LossPacket::read(bytes)); break;
    case kCommandRafted: Rafted(wagon, slot, LossPacket::read(bytes)); break;
    default: break;
    }
}

// Whether the train can go

/// Bits of the three kinds of broken parts, by supply slot.
static constexpr Int BrokenBit(Int part) { return kFlagFirstBroken << (part - kFirstPart); }

/// Mends what the spares can mend. @return The reason why the wagon cannot go, 0 if it can.
static Int CheckWagon(Wagon& wagon)
{
    if (wagon.supply[kOxen] == 0)
        return 1;
    if (wagon.flags == 0)
        return 0;
    Int reason = wagon.flags & kFlagInStore ? 6 : wagon.flags & kFlagHunting ? 5 : 0;
    Lose(wagon.flags, kFlagOxenGone);
    for (Int part = kFirstPart; part <= kThirdPart; ++part) {
        if ((wagon.flags & BrokenBit(part)) == 0)
            continue;
        Int& spares = wagon.supply[static_cast<std::size_t>(part)];
        if (spares > 0) {
            Lose(wagon.flags, BrokenBit(part));
            --spares;
        } else {
            reason = part - kFirstPart + 2;
        }
    }
    return reason;
}

Int CheckWagons()
{
    for (Int slot = 0; slot < kMaxWagons; ++slot) {
        if (!SlotUsed(gTrain, slot))
            continue;
        const Int reason = CheckWagon(WagonOf(gTrain, slot));
        if (reason == 0)
            continue;
        ByteWriter out;
        WriteDate(out, gTrain);
        out.u8(110), out.u8(slot), out.u8(reason), out.u8(0);
        QueuePackets(kPacketNews, kAllNodes, out.bytes, I(out.bytes.size()), 0);
        return 1;
    }
    return 0;
}

bool StopsTheTrain(const Wagon& wagon)
{
    if (wagon.supply[kOxen] == 0 || (wagon.flags & (kFlagHunting | kFlagInStore)) != 0)
        return true;
    for (Int part = kFirstPart; part <= kThirdPart; ++part)
        if ((wagon.flags & BrokenBit(part)) != 0 && wagon.supply[static_cast<std::size_t>(part)] == 0)
            return true;
    return false;
}

bool CantContinue()
{
    for (Int slot = 0; slot < kMaxWagons; ++slot) {
        if (!SlotUsed(gState, slot))
            continue;
        if (StopsTheTrain(WagonOf(gState, slot)))
            return true;
    }
    return false;
}

void CheckEmptyTrain()
{
    Int total = 0;
    for (Int slot = 0; slot < kMaxWagons; ++slot) {
        if (!SlotUsed(gTrain, slot))
            continue;
        const Wagon& wagon = WagonOf(gTrain, slot);
        for (const Int amount : wagon.supply)
            total += amount;
        total += HeldS16(wagon.money);
    }
    if (Held16(total) != 0)
        return;
    for (Int slot = kMaxWagons - 1; slot >= 0; --slot)
        if (SlotUsed(gTrain, slot))
            WagonGone(WagonOf(gTrain, slot), slot);
}

} // namespace Wainroad
