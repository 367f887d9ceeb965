#include "Tests/Simulation/ModelFixture.h"

#include "MacToolbox/Host/Misc.h"
#include "Wainroad/Simulation/Scoring.h"

namespace Wainroad {

using Lobby = ModelTest;

TEST_F(Lobby, ThePacketHasItsExactBytes)
{
    gLobbyState = kLobbyStore, gOccupation = 3, gStartMoney = 0x01020304;
    gStartSupplies = {2, 0, 0x0708, 0, 0, 0, 9};
    gTrainName = pstr("Line");
    gPartyNames = {pstr("Ann"), pstr("Ben"), pstr("Sixteen letters!"), pstr(""), pstr("Eve")};
    EXPECT_EQ(hex(lobbyPacket()),
        "0303"
        "01020304"
        "0002000007080000000000000009"
        "05"
        "044c696e65"
            + zeros(12) + "03416e6e" + zeros(12) + "0342656e" + zeros(12) + "105369787465656e206c657474657273"
            + zeros(16) + "03457665" + zeros(12));
    EXPECT_EQ(I(lobbyPacket().size()), kLobbyPacketBytes);
}

TEST_F(Lobby, ThePartyClosesUp)
{
    const struct {
        std::array<const char*, 5> names;
        bool good;
        std::vector<std::string> party;
    } kCases[] = {
        {{"Ann", "", "", "", ""}, true, {"Ann"}},
        {{"Ann", "", "Cleo", "", "Eve"}, true, {"Ann", "Cleo", "Eve"}},
        {{"Fifteen letters", "Sixteen letters!", "B", "", ""}, true, {"Fifteen letters", "B"}},
        {{"", "Ben", "", "", ""}, false, {}},
        {{"Sixteen letters!", "Ben", "", "", ""}, false, {}},
    };
    for (const auto& c : kCases) {
        form(0);
        OpenLobby();
        std::array<Str255, 5> names;
        for (std::size_t i = 0; i < 5; ++i)
            names[i] = pstr(c.names[i]);
        gOccupation = 3;
        const GameState before = gTrain;
        ASSERT_EQ(EnterParty(names), c.good) << c.names[0];
        if (!c.good) {
            EXPECT_EQ(gTrain, before);
            EXPECT_EQ(gLobbyState, kLobbyParty);
            continue;
        }
        EXPECT_EQ(wagon().people, I(c.party.size()));
        EXPECT_EQ(gPartySize, I(c.party.size()));
        EXPECT_EQ(string(Str255(gTrain.names[0])), c.party[0]);
        for (std::size_t i = 0; i < 4; ++i)
            EXPECT_EQ(string(Str255(wagon().family[i])), i + 1 < c.party.size() ? c.party[i + 1] : "");
        EXPECT_EQ(wagon().money, 120000);
        EXPECT_EQ(gLobbyState, kLobbyStore);
    }
}

TEST_F(Lobby, AJourneyBeginsAsOneStandingWagon)
{
    gTrain.wagon[3].illness.fill(5);
    gMySlot = 7;
    form(5);
    EXPECT_EQ(gMySlot, 0);
    EXPECT_EQ(UsedSlots(gTrain), 1);
    EXPECT_EQ(gTrain.mode, kModeLive);
    EXPECT_EQ(gTrain.landmark, -1);
    EXPECT_EQ(gTrain.year, 1848);
    EXPECT_EQ(gTrain.leader, 42);
    EXPECT_EQ(wagon().node, 42);
    EXPECT_EQ(wagon().startPeople, 5);
    EXPECT_EQ(wagon().money, gOccupationMoney[5]);
    EXPECT_EQ(wagon().supply, gStartSupplies);
    for (const Wagon& w : gTrain.wagon)
        EXPECT_EQ(w.illness, (std::array<Int, 5>{255, 255, 255, 255, 255}));
    EXPECT_EQ(gState.wagon[0], wagon());
}

TEST_F(Lobby, TheMonthSetsTheGround)
{
    for (Int month = 3; month <= 7; ++month) {
        form(0);
        gTrain.snow = gTrain.rain = 0;
        EXPECT_EQ(draws(99, [&] { BeginMonth(month); }), month == 3 ? 3 : 2) << "snow in March, rain, temperature";
        EXPECT_EQ(gTrain.rain / 100, 8 - month);
        EXPECT_EQ(gTrain.snow > 0, month == 3);
        EXPECT_LT(gTrain.snow, 1200);
        EXPECT_EQ(gState.month, month);
        EXPECT_EQ(gState.startMonth, month);
        EXPECT_EQ(gTrain.startDay, 1);
    }
}

TEST_F(Lobby, TheFirstPacketIsHeard)
{
    OpenLobby();
    LobbyVBL();
    DispatchPackets();
    ASSERT_EQ(gLobbyCount, 1);
    EXPECT_EQ(gLobby[0].node, 42);
    EXPECT_EQ(gLobby[0].state, kLobbyParty);
    ModelVBL(); // the model's period serves the lobby also without a journey
    DispatchPackets();
    EXPECT_EQ(gLobbyCount, 1);

    PacketHeader p;
    p.sender = 7, p.data = lobbyPacket();
    for (const Int state : {1, 3, 3, 1, 1, 5}) {
        p.data[0] = static_cast<std::uint8_t>(state);
        p.data[38] = 3, p.data[39] = 'Z', p.data[40] = 'o', p.data[41] = 'e';
        LobbyFilter(p);
        EXPECT_EQ(gLobbyCount, state >= 2 ? 2 : 1) << state;
    }
    EXPECT_EQ(gLobby[1].train, Str255{0}) << "a newcomer has no names yet";
    p.data[0] = 4;
    LobbyFilter(p);
    EXPECT_EQ(string(gLobby[1].train), "Zoe");
    p.data = {2};
    LobbyFilter(p);
    EXPECT_EQ(gLobby[1].train, Str255{0});
    for (Int node = 100; node < 200; ++node)
        p.sender = node, LobbyFilter(p);
    EXPECT_EQ(gLobbyCount, 60) << "a full lobby takes nobody";
}

TEST_F(Lobby, SilenceDropsAndALongStayInTheStoreDoesNoHarm)
{
    OpenLobby();
    const std::array<Str255, 1> names{pstr("Ann")};
    EnterParty(names);
    LobbyVBL();
    DispatchPackets();
    const Int now = TickCount();
    gHeard[0] = now - 2300, gLobby[0].heard = now - 2300, gLobbyTick = now - 400;
    LobbyVBL();
    EXPECT_EQ(gTrain.wagons, 0);
    EXPECT_EQ(wagon().node, kNobody);
    EXPECT_EQ(gLobbyCount, 0);
    BeginSolo();
    EXPECT_EQ(gTrain.wagons, 1);
    EXPECT_EQ(wagon().node, 42);
    EXPECT_EQ(wagon().people, 1);
    EXPECT_EQ(gTrain.startWagons, 1);
    EXPECT_EQ(gLobbyState, kLobbyNone);
}

TEST_F(Lobby, LeavingEndsIt)
{
    OpenLobby();
    LobbyVBL();
    DispatchPackets();
    gTrain.mode = gState.mode = kModeLive;
    CloseLobby();
    DispatchPackets();
    EXPECT_EQ(gLobbyState, kLobbyNone);
    EXPECT_EQ(gTrain.mode, 0);
    EXPECT_EQ(gState.mode, 0);
}

TEST_F(Lobby, ScoresOfAWagonAndATrain)
{
    gState.wagon[0].supply = {9, 8, 100, 1, 1, 1, 300};
    gState.wagon[0].money = 50000, gState.wagon[0].health = 0, gState.wagon[0].people = 5;
    const struct {
        Int occupation, health, score;
    } kCases[] = {
        {0, 0, 2687}, {5, 0, 4031}, {0, 34, 2687}, {0, 35, 2187}, {0, 139, 1187}, {7, 70, (1687 * 7 + 1) / 2}};
    for (const auto& c : kCases) {
        gState.wagon[0].occupation = c.occupation, gState.wagon[0].health = c.health;
        EXPECT_EQ(WagonScore(0), c.score) << c.occupation << ' ' << c.health;
    }
    EXPECT_EQ(WagonScore(1), 0);
    EXPECT_EQ(WagonScore(-1), 0);
    gState.slots = 2, gState.order[1] = kNobody;
    gState.wagon[0].occupation = 0, gState.wagon[0].health = 0;
    EXPECT_EQ(TrainScore(), 2687 / 2) << "an empty slot counts";
    gState.slots = 0;
    EXPECT_EQ(TrainScore(), 0);
}

} // namespace Wainroad
