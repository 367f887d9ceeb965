// Messages of the journal: each byte string as a message of its own, and as what a store holds.

#include "MacToolbox/Base/RunState.h"
#include "Wainroad/Journal/Log.h"
#include "Wainroad/Journal/Wording.h"
#include "Wainroad/Simulation/Model.h"
#include "Wainroad/Simulation/Records.h"

#include <algorithm>
#include <cstdlib>

using namespace Wainroad;

static void require(bool holds)
{
    if (!holds)
        std::abort();
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    startRunAfresh();
    MessagesInit();
    gState.mode = kModeLive;
    gMySlot = size > 0 ? data[0] & 31 : 0;

    // A row of news packets: a length, and that many bytes. A code without a size would end the program: left out.
    ByteReader in(std::span(data, size));
    while (!in.atEnd()) {
        PacketHeader packet;
        packet.data = in.raw(in.u8());
        Bytes message(packet.data.begin() + std::min<std::ptrdiff_t>(4, std::ssize(packet.data)), packet.data.end());
        message.resize(message.size() + 600);
        if (MessageSize(message) == 0)
            continue;
        NewsFilter(packet);
        require(MessageText(message).size() <= 256);
        MessageFace(message);
        if (gNewsQueue.cur > 800)
            FlushNews();
    }
    FlushNews();
    require(gLogInfo.end < kLogBytes);
    Int count = 0;
    for (Int at = 0; at < gLogInfo.end; at = NextMessage(at), ++count) {
        require(MessageText(MessageAt(at)).size() <= 256);
        IsHidden(at);
    }
    require(count == gLogInfo.count);
    return 0;
}
