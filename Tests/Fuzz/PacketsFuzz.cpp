// A row of packets of any type and length, given to the filters of a journey under way. Each packet is a type, a
// length, part and parts, a serial, and that many bytes.

#include "MacToolbox/Base/ManualClock.h"
#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Base/Strings.h"
#include "Wainroad/Simulation/Commands.h"
#include "Wainroad/Simulation/Lobby.h"
#include "Wainroad/Simulation/Model.h"
#include "Wainroad/Simulation/Packets.h"

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
    OpenLobby();
    EnterParty(std::array{pstr("Ann"), pstr("Ben")});
    BeginSolo();
    BeginMonth(3);
    AddFilter(kPacketLobby, LobbyFilter);

    ByteReader in(std::span(data, size));
    while (!in.atEnd()) {
        PacketHeader packet;
        packet.type = in.u8();
        const Int length = in.u16() % (kPacketBytes + 1);
        packet.part = in.s8(), packet.parts = in.s8(), packet.serial = in.u8();
        packet.sender = packet.serial;
        packet.data = in.raw(length);
        packet.length = length + 14;
        switch (packet.type % 5) {
        case 0: CommandFilter(packet); break;
        case 1: StateFilter(packet); break;
        case 2: SystemFilter(packet); break;
        case 3: LobbyFilter(packet); break;
        default: QueuePackets(packet.type, packet.sender, packet.data, in.u16(), packet.part); break;
        }
        DispatchPackets();
        gTrain.mode |= kModeLive; // a command may end the journey; the next one is to be read all the same
        require(gMessageCount <= 8 && gLobbyCount <= 60);
        require(gTrain.landmark >= -1 && gTrain.landmark <= 16);
    }
    ModelVBL();
    CloseNetwork();
    Clock::install(nullptr);
    return 0;
}
