#pragma once

#include "Wainroad/Simulation/Packets.h"
#include "Wainroad/Simulation/Records.h"

/// From the wish to travel to the first day: the lobby, the party, the new train. The screens that ask are elsewhere.
namespace Wainroad {

/// A node that has been heard.
struct LobbyEntry {
    Int node = 0;
    Int state = 0;   ///< 2 or above
    Int heard = 0;   ///< `TickCount` when last heard
    Str255 train{0}; ///< name of its leader
    Str255 name{0};  ///< name of its train
};

/// Values of `gLobbyState`.
enum LobbyState : Int { kLobbyNone, kLobbyLeaving, kLobbyParty, kLobbyStore, kLobbyReady, kLobbyTrain };

inline constexpr Int kLobbyPacketBytes = 118;

extern std::array<LobbyEntry, 60> gLobby;
extern Int gLobbyCount;
extern Int gLobbyState;
extern Int gLobbyTick;                             ///< a time mark; 0 when it has lapsed
extern std::array<Int, kMaxWagons> gHeard;         ///< `TickCount` of the last word of each wagon of `gTrain`
extern std::array<Str255, kMaxPeople> gPartyNames; ///< leader first
extern Int gPartySize;                             ///< 1..5
extern Int gOccupation;                            ///< 0..7
extern Int gStartMoney;                            ///< cents
extern std::array<Int, kSupplyCount> gStartSupplies;
extern std::array<Str255, 9> gTrainNames;  ///< all empty
extern std::array<bool, 8> gTrainNameUsed; ///< all false
extern Int gTrainChoice;
extern Str255 gTrainName;
extern bool gFormingShown; ///< the store is the one before the journey

/// The model's half of `TravelTheTrail`: clears the records and the lobby, and listens for lobby packets.
void OpenLobby();
/// The model's half of `LeaveLobby`: tells the others, and ends the lobby and the journey that was to be.
void CloseLobby();
/// Takes the party into the train's first wagon and gives it its money. `names` are those of `PartyPanel2`, leader
/// first; a family name that is empty or longer than 15 characters is left out. Needs `gOccupation`, `gTrainChoice`.
/// @return False, with nothing changed, if the leader's name is not of 1 to 15 characters.
bool EnterParty(std::span<const Str255> names);
/// The model's half of `StartSolo`: a new train of one wagon with what was bought, standing still.
void BeginSolo();
/// The model's half of `MonthPanel`: sets off in `month` (3..7 in the game), with its ground water and weather.
void BeginMonth(Int month);
/// Makes `gTrain` a new journey for its `wagons` wagons.
void NewTrain();

/// The lobby's share of a model period.
void LobbyVBL();
/// Type 6.
void LobbyFilter(const PacketHeader& packet);
/// The 118 bytes that tell of this node.
Bytes lobbyPacket();

} // namespace Wainroad
