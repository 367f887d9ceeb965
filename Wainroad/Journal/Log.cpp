#include "Wainroad/Journal/Log.h"

#include "MacToolbox/Base/RunState.h"
#include "Wainroad/Errors/Errors.h"
#include "Wainroad/Simulation/Model.h"
#include "Wainroad/Simulation/Records.h"

#include <algorithm>

namespace Wainroad {

Handle gLogBuffer;
LogInfo gLogInfo;
std::array<Int, kLogBlocks> gBlockOffsets{};
std::array<Int, kLogBlocks> gBlockLines{};
NewsQueue gNewsQueue;
NewsQueue gNewsQueue2;
NewsQueue* gNewsTarget = &gNewsQueue;
std::function<void(Int, Int, Int)> gLogTrimmed;

static constexpr Int kQueueBytes = 1024, kQueue2Bytes = 256;
static constexpr Int kItemHead = 6;          ///< size and date of a queued item
static constexpr Int kBaseNumber = 0x100000; ///< stands for the start of the buffer in the stored form

static const AtRunStart sFreshLog{[] {
    gLogBuffer = nullptr;
    gLogInfo = {};
    gBlockOffsets = gBlockLines = {};
    gNewsQueue = gNewsQueue2 = {};
    gNewsTarget = &gNewsQueue;
    gLogTrimmed = nullptr;
}};

/// Base, end, blocks, the four trims, count, 4 zeros, lines, 4 zeros, date.
Bytes LogInfo::bytes() const
{
    ByteWriter out;
    out.u32(kBaseNumber), out.u32(kBaseNumber + end);
    out.u16(blocks), out.u16(trimBytes), out.u16(trimMsgs), out.u16(trimLines), out.u16(trimTop), out.u16(count);
    out.u32(0), out.u16(lines), out.u32(0), out.u32(lastDate);
    return out.bytes;
}

void LogInfo::load(std::span<const std::uint8_t> packed)
{
    ByteReader in(packed);
    const Int base = in.u32();
    end = std::clamp(in.u32() - base, Int{0}, kLogBytes);
    blocks = in.u16(), trimBytes = in.u16(), trimMsgs = in.u16(), trimLines = in.u16(), trimTop = in.u16(),
    count = in.u16();
    in.skip(4);
    lines = in.u16();
    in.skip(4);
    lastDate = in.s32();
}

void MessagesInit()
{
    gNewsQueue = {NewHandleClear(kQueueBytes), 0, 0};
    gNewsQueue2 = {NewHandleClear(kQueue2Bytes), 0, 0};
    gNewsTarget = &gNewsQueue;
    gLogBuffer = NewHandleClear(kLogBytes);
    ResetLog();
}

void ResetLog()
{
    gLogInfo = {};
    EmptyQueue(gNewsQueue);
    EmptyQueue(gNewsQueue2);
}

void LogLoaded()
{
    const Int end = gLogInfo.end, lastDate = gLogInfo.lastDate;
    gLogInfo = {};
    gLogInfo.end = end;
    gLogInfo.lastDate = lastDate;
}

// Queues

void EmptyQueue(NewsQueue& queue) { queue.cur = queue.lost = 0; }

void NewsFilter(const PacketHeader& packet)
{
    if (gState.mode == 0)
        return;
    NewsQueue& queue = *gNewsTarget;
    const Int size = I(packet.data.size()) + (I(packet.data.size()) & 1);
    if (queue.cur + size + 1 >= GetHandleSize(queue.buffer)) {
        ++queue.lost;
        return;
    }
    Bytes& bytes = queue.buffer->bytes;
    queue.buffer->set16(queue.cur, size);
    const auto data = bytes.begin() + queue.cur + 2;
    std::fill(std::copy(packet.data.begin(), packet.data.end(), data), data + size, 0);
    queue.cur += size + 2;
}

void DrainNews(NewsQueue& queue)
{
    for (Int at = 0; at < queue.cur;) {
        const Int next = at + 2 + queue.buffer->u16(at);
        const Int date = next - at >= kItemHead ? queue.buffer->s32(at + 2) : 0;
        if (date > gLogInfo.lastDate) {
            ByteWriter line;
            line.u8(kLogDate), line.u8(0), line.u32(date);
            AppendMessage(line.bytes);
            gLogInfo.lastDate = date;
        }
        const Int start = std::min(at + kItemHead, next);
        AppendMessage(std::span(queue.buffer->bytes)
                          .subspan(static_cast<std::size_t>(start), static_cast<std::size_t>(next - start)));
        at = next;
    }
    EmptyQueue(queue);
}

NewNews FlushNews()
{
    if (gNewsQueue.empty())
        return {0, gLogInfo.end};
    const LogInfo before = gLogInfo;
    gNewsTarget = &gNewsQueue2;
    DrainNews(gNewsQueue);
    gNewsTarget = &gNewsQueue;
    if (!gNewsQueue2.empty())
        DrainNews(gNewsQueue2);
    const Int oldCount = std::max(before.count - (gLogInfo.trimMsgs - before.trimMsgs), Int{0});
    const Int oldEnd = std::max(before.end - (gLogInfo.trimBytes - before.trimBytes), Int{0});
    return {gLogInfo.count - oldCount, oldEnd};
}

// The form of a message

/// Size of a message of fixed length by its code; 0 for the others.
static Int FixedSize(Int code)
{
    if (code <= 62)
        return 2;
    if (code <= 69)
        return 16;
    if (code <= 84)
        return 12;
    if (code <= 95 || (code >= 105 && code <= 111))
        return 4;
    return code == kLogDate ? 6 : 0;
}

Int MessageSize(std::span<const std::uint8_t> message)
{
    const Int there = I(message.size());
    if (there == 0)
        return 0;
    Int size = FixedSize(message[0]);
    if (message[0] == 118 || message[0] == 119) {
        size = there > 2 ? 3 + I(message[2]) : 0; // code, sender, counted string
        if (message[0] == 118 && size > 0)
            size = there > size ? size + 1 + I(message[static_cast<std::size_t>(size)]) : 0; // counted slots
    }
    size += size & 1;
    return size <= there ? size : 0;
}

std::span<const std::uint8_t> MessageAt(Int offset)
{
    const Int left = std::max(gLogInfo.end - offset, Int{0});
    const std::span stored = std::span<const std::uint8_t>(gLogBuffer->bytes)
                                 .subspan(static_cast<std::size_t>(offset), static_cast<std::size_t>(left));
    const Int size = MessageSize(stored);
    if (size == 0) {
        gLogInfo.end = std::min(gLogInfo.end, offset); // what is drawn behind the alert does not come here again
        Fatal(1, "NextMsg");
    }
    return stored.first(static_cast<std::size_t>(size));
}

Int NextMessage(Int offset) { return offset + I(MessageAt(offset).size()); }

// The store

void AppendMessage(std::span<const std::uint8_t> message)
{
    // A packet may be cut short or carry more than the message: what is stored is the message, padded with zeros.
    Bytes whole(message.begin(), message.end());
    whole.resize(whole.size() + 516);
    const Int size = MessageSize(whole);
    if (size == 0)
        Fatal(1, "NextMsg");
    while (gLogInfo.end + size >= kLogBytes && gLogInfo.count > 0)
        TrimLog();
    std::copy_n(whole.begin(), size, gLogBuffer->bytes.begin() + gLogInfo.end);
    if (gLogInfo.count % kLogBlock == 0 && gLogInfo.blocks < kLogBlocks)
        gBlockOffsets[static_cast<std::size_t>(gLogInfo.blocks++)] = gLogInfo.end;
    gLogInfo.end += size;
    ++gLogInfo.count;
}

void TrimLog()
{
    LogInfo& log = gLogInfo;
    const Int k = std::max(log.blocks / 4, Int{1});
    const bool all = k >= log.blocks;
    const auto first = static_cast<std::size_t>(all ? 0 : k);
    const Int bytes = all ? log.end : gBlockOffsets[first], lines = all ? log.lines : gBlockLines[first];
    const Int msgs = all ? log.count : k * kLogBlock;

    const auto start = gLogBuffer->bytes.begin();
    std::copy(start + bytes, start + log.end, start);
    const Int left = all ? 0 : log.blocks - k;
    for (Int i = 0; i < left; ++i) {
        const auto to = static_cast<std::size_t>(i), from = static_cast<std::size_t>(i + k);
        gBlockOffsets[to] = gBlockOffsets[from] - bytes;
        gBlockLines[to] = gBlockLines[from] - lines;
    }
    log.end -= bytes, log.count -= msgs, log.lines -= lines, log.blocks = left;
    log.trimBytes += bytes, log.trimMsgs += msgs, log.trimLines += lines;
    if (gLogTrimmed)
        gLogTrimmed(msgs, lines, bytes);
}

// Who sees what

/// True if a message that is no date line is left out.
static bool IsHiddenMessage(std::span<const std::uint8_t> message)
{
    const Int code = message[0], b = message[1];
    switch (code) {
    case 65: return false;
    case 20:
    case 25:
    case 36:
    case 43: return (b & 31) != gMySlot;
    case 105: return b != gMySlot;
    case 106:
    case 107:
    case 108:
    case 109: return b == 130 && (message[2] & 31) != gMySlot;
    case 118: {
        if (b == gMySlot)
            return false;
        const std::size_t slots = std::size_t{4} + message[2];
        const auto list = message.subspan(slots, message[slots - 1]);
        return std::find(list.begin(), list.end(), gMySlot) == list.end();
    }
    default: break;
    }
    if (code >= 63 && code <= 69)
        return b != gMySlot;
    if (code >= 70 && code <= 84 && code != 71 && code != 72) {
        const bool mine = b == gMySlot || message[2] == gMySlot;
        return code == 80 ? mine : !mine;
    }
    return false;
}

bool IsHidden(Int offset)
{
    const auto message = MessageAt(offset);
    if (message[0] != kLogDate)
        return IsHiddenMessage(message);
    for (Int next = offset + I(message.size()); next < gLogInfo.end; next = NextMessage(next)) {
        const auto follows = MessageAt(next);
        if (follows[0] == kLogDate)
            return true;
        if (!IsHiddenMessage(follows))
            return false;
    }
    return true;
}

} // namespace Wainroad
