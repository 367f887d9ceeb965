#pragma once

#include "Tools/rsrc/Archive.h"

/// Every resource of the game, as the sources in the tree give them. A fault in a source fails the test.
const Rsrc::Archive& gameResources();

/// The bytes of one of them. A missing one fails the test and is empty.
const MacToolbox::Bytes& gameResource(const char* type, MacToolbox::Int id);
