#include "Wainroad/Simulation/News.h"

#include "Wainroad/Simulation/Model.h"
#include "Wainroad/Simulation/Packets.h"

#include <initializer_list>

namespace Wainroad {

void WriteDate(ByteWriter& out, const GameState& state)
{
    out.u16(state.year);
    out.u8(state.month);
    out.u8(state.day);
}

/// Queues a short entry: a date and a few bytes. The journal never sees more than what is queued here.
static void QueueEntry(const GameState& dated, std::initializer_list<Int> bytes, Int flags)
{
    std::array<std::uint8_t, 8> entry{static_cast<std::uint8_t>(dated.year >> 8), static_cast<std::uint8_t>(dated.year),
        static_cast<std::uint8_t>(dated.month), static_cast<std::uint8_t>(dated.day)};
    std::size_t length = 4;
    for (const Int byte : bytes)
        entry[length++] = static_cast<std::uint8_t>(byte);
    QueuePackets(kPacketNews, kAllNodes, entry, I(length), flags);
}

void News(Int code, Int slot, Int person, bool shown)
{
    QueueEntry(gTrain, {code, person * 32 + slot}, shown ? 0 : kBroadcastFlags);
}

void TrainNews(Int code) { QueueEntry(gTrain, {code, 0}, 0); }

void Arrived(Int code, Int landmark) { QueueEntry(gTrain, {code, landmark}, 0); }

void SendLosses(Int code, Int slot, std::span<const Int> losses, Int money)
{
    ByteWriter out;
    out.bytes.reserve(20);
    WriteDate(out, gTrain);
    out.u8(code), out.u8(slot);
    out.u8(losses[kOxen]), out.u8(losses[kClothes]), out.u16(losses[kBullets]);
    out.u8(losses[kFirstPart]), out.u8(losses[kSecondPart]), out.u8(losses[kThirdPart]), out.u8(0);
    out.u16(losses[kFood]), out.u32(money);
    QueuePackets(kPacketNews, kAllNodes, out.bytes, I(out.bytes.size()), 0);
}

void SendAction(Int action, Int a) { QueueEntry(gState, {109, action, a, 0}, kBroadcastFlags); }

void SendMessage(Int kind, Int a, Int b, Int c, Int node, Int flags)
{
    const std::array<std::uint8_t, 4> message{static_cast<std::uint8_t>(kind), static_cast<std::uint8_t>(a),
        static_cast<std::uint8_t>(b), static_cast<std::uint8_t>(c)};
    QueuePackets(kPacketSystem, node, message, I(message.size()), flags);
}

} // namespace Wainroad
