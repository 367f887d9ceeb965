#pragma once

// The settings behind the password: how fast days pass, how long a hunt lasts, the legends, the password itself.
// Every dialog writes through the configuration file.

#include "MacToolbox/Base/Memory.h"

#include <functional>

namespace Wainroad {
using namespace MacToolbox;

extern bool gManagement; ///< the menu is unlocked; every start finds it locked

/// Asks for the password and unlocks the menu.
void EnableManagement();
/// Locks the menu again.
void DisableManagement();
void ChangePassword();
/// Days of a journey and seconds of a hunt.
void TimeDialog();
/// The mode of the network, after a warning.
void NetworkDialog();
/// Takes rows out of the list of legends, or restores the list that the game came with.
void LegendsDialog();

/// Opens the configuration for update, lets `change` alter `gOptions`, and writes it. Network modes wait meanwhile.
void UpdateOptions(const std::function<void()>& change);

} // namespace Wainroad
