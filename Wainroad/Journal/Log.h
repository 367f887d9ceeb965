#pragma once

#include "MacToolbox/Base/Memory.h"
#include "Wainroad/Simulation/Packets.h"

#include <array>
#include <functional>
#include <span>

/// The store of the journal: messages in their compact form, not as text, in one buffer of 10240 bytes. When it fills,
/// the oldest quarter goes. News that comes while the store is not ready waits in two queues.
///
/// A message begins with its code; its size follows from the code, rounded up to an even number. See `MessageSize`.
namespace Wainroad {

using namespace MacToolbox;

inline constexpr Int kLogBytes = 10240;
inline constexpr Int kLogInfoBytes = 34;
inline constexpr Int kLogBlock = 8; ///< messages for each entry of the two tables
inline constexpr Int kLogBlocks = 1050;
inline constexpr Int kLogDate = 120; ///< code of a date line

/// What is stored. Positions are offsets into `gLogBuffer`.
struct LogInfo {
    Int end = 0;                                    ///< behind the last stored byte
    Int blocks = 0;                                 ///< entries of `gBlockOffsets` and `gBlockLines` in use
    Int trimBytes = 0, trimMsgs = 0, trimLines = 0; ///< what trims removed since the view last laid out news
    Int trimTop = 0;                                ///< the scroll position that the trims leave, in lines
    Int count = 0;                                  ///< messages
    Int lines = 0;                                  ///< their lines, as laid out
    Int lastDate = 0;                               ///< date of the last date line: year, month, day in 32 bits

    bool operator==(const LogInfo&) const = default;

    /// The 34 bytes of a saved game.
    Bytes bytes() const;
    /// Takes them; `end` is limited to 0..10240.
    void load(std::span<const std::uint8_t> packed);
};

/// Packets that wait. An item is its size (u16), then that many bytes: date and message.
struct NewsQueue {
    Handle buffer;
    Int cur = 0;  ///< behind the last item
    Int lost = 0; ///< items dropped because it was full

    bool empty() const { return cur == 0; }
};

extern Handle gLogBuffer; ///< exactly 10240 bytes from `MessagesInit` on
extern LogInfo gLogInfo;
extern std::array<Int, kLogBlocks> gBlockOffsets; ///< offset of every 8th message
extern std::array<Int, kLogBlocks> gBlockLines;   ///< lines before it; the view fills them in
extern NewsQueue gNewsQueue;                      ///< 1024 bytes
extern NewsQueue gNewsQueue2;                     ///< 256 bytes, for what comes while the first is drained
extern NewsQueue* gNewsTarget;                    ///< the one being filled

/// Called by every trim, when the store and its tables are in step again: the view corrects what it holds.
extern std::function<void(Int msgs, Int lines, Int bytes)> gLogTrimmed;

/// Makes the queues and the buffer, and empties the store.
void MessagesInit();
/// Empties the store and both queues.
void ResetLog();
/// The filter of packet type 0: puts a packet into the queue. Ignored while `gState.mode` is 0; lost when it is full.
void NewsFilter(const PacketHeader& packet);

/// What a flush brought: the messages added, date lines among them, and where the first of them lies.
struct NewNews {
    Int count = 0, offset = 0;
};
/// Moves what waits in the queues into the store.
NewNews FlushNews();
/// Moves the items of one queue into the store, each new day after a date line.
void DrainNews(NewsQueue& queue);
/// Forgets what waits in a queue.
void EmptyQueue(NewsQueue& queue);

/// Stores one message; a full store is trimmed first. Bytes that are missing count as 0. A code without a size ends
/// in `Fatal`.
void AppendMessage(std::span<const std::uint8_t> message);
/// Removes the oldest quarter of the blocks, at least one.
void TrimLog();

/// The stored size of the message that begins here; 0 for a code without one, or if it does not end within the bytes.
Int MessageSize(std::span<const std::uint8_t> message);
/// The bytes of the stored message at `offset`; `Fatal` with "NextMsg" for one that is none or passes the end.
std::span<const std::uint8_t> MessageAt(Int offset);
/// The offset behind the stored message at `offset`. `Fatal` as above.
Int NextMessage(Int offset);
/// True for a message that this player's journal leaves out: what concerns other wagons only, and a date line that no
/// shown message follows before the next.
bool IsHidden(Int offset);

/// Makes what `gLogInfo` and `gLogBuffer` were given by a file harmless: counts that the view makes anew start at 0.
/// A message that cannot be is found when the view walks the store.
void LogLoaded();

} // namespace Wainroad
