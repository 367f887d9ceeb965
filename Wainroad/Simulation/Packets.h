#pragma once

#include "MacToolbox/Base/Memory.h"

#include <array>
#include <functional>
#include <span>
#include <vector>

/// The packet layer between model, view and journal: a pool of buffers, a table of filters, and a task that hands each
/// filled buffer to the filter of its type. Nothing leaves the process. Game thread only.
namespace Wainroad {

using namespace MacToolbox;

enum PacketType : Int { kPacketNews = 0, kPacketState = 1, kPacketCommand = 2, kPacketLobby = 6, kPacketSystem = 7 };

inline constexpr Int kPacketBytes = 572; ///< the most that one packet carries
inline constexpr Int kPacketBuffers = 16;
inline constexpr Int kMaxFilters = 12;
inline constexpr Int kAllNodes = 255;
inline constexpr Int kBroadcastFlags = 128;

struct PacketHeader {
    Int serial = 0;
    Int length = 0; ///< of the data, plus 14
    Int sender = 0;
    Int parts = 0; ///< packets of the message
    Int part = 0;  ///< of this packet, from 1
    Int flags = 0; ///< stored only
    Int type = 0;
    Int x0C = 0; ///< always 2
    Bytes data;  ///< at most 572 bytes
};

struct PacketBuffer {
    Int state = 0; ///< 0 free, 1 waits for dispatch
    Int busy = 0;  ///< claims while it is filled
    Int dest = 0;  ///< node, 255 for all; stored only, as the rest but `p`
    Int time = 0;
    Int retries = 0;
    Int waiting = 0;
    std::array<Int, 32> acked{};
    PacketHeader p;
};

using FilterProc = std::function<void(const PacketHeader&)>;

struct Filter {
    FilterProc proc;
    Int type = 0;
};

extern std::vector<PacketBuffer> gPackets; ///< 16 buffers between `PacketsInit` and `CloseNetwork`, else none
extern std::vector<Filter> gFilters;       ///< at most 12
extern Int gSerial;
extern Int gMyID;     ///< this program's node, 42 from `PacketsInit` on
extern Int gMachines; ///< machines in a train that forms; 0 here
extern Int gNetSocket;
extern bool gQueueFull; ///< a queue attempt found no buffer

/// Makes the pool and installs the dispatch task, every 10 ticks. @return 0; a failed install ends in `Fatal`.
OSErr PacketsInit();
/// Queues `length` bytes in packets of at most 572: `bytes` cut to that length or padded with zeros.
/// @return 0 for a `length` below 1, -1 if no buffer was free (what is queued already stays), else the first serial.
Int QueuePackets(Int type, Int dest, std::span<const std::uint8_t> bytes, Int length, Int flags);
/// Hands every filled buffer, front to back, to the filter of its type, and frees it.
void DispatchPackets();
/// Sets the filter of a type, in place of an older one. A full table ends in `Fatal`.
void AddFilter(Int type, FilterProc proc);
/// Removes the filter of a type, if there is one.
void RemoveFilter(Int type);
/// Removes all filters and throws away what is queued; takes 300 ticks at most.
void DrainPackets();
/// Drains and ends the packet layer.
void CloseNetwork();

} // namespace Wainroad
