#pragma once

#include "Wainroad/Simulation/Packets.h"
#include "Wainroad/Simulation/Records.h"

/// The model's loop, and the view's end of it: the clock of the days, the broadcast of `gTrain`, its copy in `gState`,
/// and the messages that the main loop acts on.
namespace Wainroad {

/// A message of the model; `kind` 0 is a free entry.
struct ModelMessage {
    Int kind = 0, a = 0, b = 0, c = 0;
};

enum MessageKind : Int {
    kMessageHunt = 1,
    kMessageStart = 3,
    kMessageTravel = 4,
    kMessageArrival = 6,
    kMessageExit = 7,
    kMessageQuit = 8,
    kMessageGone = 9,
    kMessageRaft = 10,
    kMessageTalkTurn = 11,
    kMessageTalkEnded = 12,
    kMessageDeath = 13
};

inline constexpr Int kModelTicks = 75; ///< ticks of a model period

extern Int gMySlot;             ///< slot of this program's wagon
extern bool gMourning;          ///< a death happened and the mourning panel is due
extern bool gNewDeaths;         ///< a crossing's deaths that the train has not been told about
extern Int gModelTicks;         ///< periods since the last day, 0..255
extern Int gPlaying;            ///< 0 no journey, 1 a train is forming, 2 under way
extern Int gLeaderStart;        ///< tick at which a follower joined; 0 here
extern bool gTradeWithEmigrant; ///< a trade with somebody met on the trail is open

extern std::array<ModelMessage, 8> gMessages;
extern Int gMessageCount;                ///< entries of `gMessages` in use
extern Bytes gStateBuffer;               ///< the byte form of a state under assembly
extern std::array<Int, 32> gNodeMissing; ///< by fragment: 1 once it is here
extern std::array<Int, 8> gNodeSerial;   ///< serial of each fragment
extern Int gStateCount;                  ///< states received whole

/// Clears `mode` in all three records and the messages, registers the filters of types 1, 2 and 7, and installs the
/// model's task, every 75 ticks. A failed install ends in `Fatal`.
void ModelInit();
/// Removes the model's task.
void ModelClose();
/// One period of the model. The task calls it; tests may.
void ModelVBL();
/// Queues the byte form of `gTrain` for the view.
void BroadcastState();
/// Copies what a broadcast of `from` would carry: head and starting wagons, each number cut to its stored width.
/// Caps three fields of `from`. The other wagons and the tail of `to` stay.
void CopyState(GameState& from, GameState& to);

void StateFilter(const PacketHeader& packet);  ///< type 1: rebuilds `gState`
void SystemFilter(const PacketHeader& packet); ///< type 7: notes a message; a ninth is lost

} // namespace Wainroad
