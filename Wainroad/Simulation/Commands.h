#pragma once

#include "Wainroad/Simulation/Packets.h"
#include "Wainroad/Simulation/Records.h"

/// The player's decisions: packets of type 2 that the view sends and the model carries out on `gTrain`.
namespace Wainroad {

enum Command : Int {
    kCommandRations = 0, ///< a: rations
    kCommandRequest = 1, ///< a: item wanted, b: amount
    kCommandPace = 2,    ///< a: pace
    kCommandRest = 3,    ///< a: days
    kCommandStop = 4,
    kCommandContinue = 5, ///< a: route
    kCommandHunted = 6,   ///< a: pounds of food, b: bullets used
    kCommandEnterStore = 7,
    kCommandLeaveStore = 8,
    kCommandCross = 10,
    kCommandRaft = 11, ///< a `LossPacket`
    kCommandTalk = 12, ///< a: 255, b: node
    kCommandTalkBegins = 13,
    kCommandTalkEnds = 14,
    kCommandCrossingChosen = 15,
    kCommandHunt = 16,
    kCommandMark = 17,
    kCommandUnmark = 18,
    kCommandFine = 19,     ///< 500 cents from everybody
    kCommandSupplies = 20, ///< a supply change
    kCommandTrade = 40,    ///< a trade
    kCommandCrossed = 60,  ///< a `LossPacket`
    kCommandRafted = 61    ///< a `LossPacket`
};

/// Queues a command of this program's wagon. `a` keeps 8 bits, `b` 32.
void SendCommand(Int command, Int a, Int b);
void SendRest(Int days);
/// Command 20: what is added to each of the seven supplies, and to the money in cents. Negative takes away.
void SendSupplyChange(std::span<const Int> change, Int cents);
/// Commands 11, 60 and 61.
void SendLossPacket(Int kind, std::span<const Int> supplies, std::span<const Int> drowned);

/// Type 2: carries a command out on `gTrain`. Ignored while its `mode` is 0.
void CommandFilter(const PacketHeader& packet);

/// Mends what can be mended from spares and tells the journal why the train cannot go on.
/// @return 1 if a wagon cannot go.
Int CheckWagons();
/// The view's twin of `CheckWagons`: asks `gState`, changes nothing.
bool CantContinue();
/// True if this wagon has no oxen, is out hunting or shopping, or lacks a part for a broken one.
bool StopsTheTrain(const Wagon& wagon);
/// Ends every wagon if nothing is left in the whole train.
void CheckEmptyTrain();

} // namespace Wainroad
